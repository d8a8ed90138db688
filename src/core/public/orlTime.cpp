// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTime.h"

#include "internal/orlHidden.h"
#include "internal/orlJson.h"

#include <cfloat>
#include <cstdint>
#include <limits>

namespace ORL_0_81 {

namespace {

constexpr char NB_TICKS_TAG[] = "number_of_ticks";
constexpr char NUMERATOR_TAG[] = "numerator";
constexpr char DENOMINATOR_TAG[] = "denominator";

} // namespace

struct ORL_HIDDEN Time::Impl {
    std::int64_t ticks = 0;
    Rational rate;

    String toJson() const;
    Status fromJson(String const& text);

    bool isEqual(Impl const& other) const { return ticks == other.ticks && rate == other.rate; }
};

static_assert(sizeof(Time) == sizeof(void*), "applications know this size");

Time::Time() : m_impl(new Impl) {}

Time::Time(long long nbTicks, Rational const& rate) : m_impl(new Impl{nbTicks, rate}) {}

Time::Time(Time const& other) : m_impl(new Impl(*other.m_impl)) {}

Time::Time(Time&& other) noexcept : m_impl(other.m_impl) { other.m_impl = nullptr; }

Time::~Time() {
    delete m_impl;
    m_impl = nullptr;
}

Time& Time::operator=(Time const& other) noexcept {
    if (this != &other) {
        *m_impl = *other.m_impl;
    }
    return *this;
}

Time& Time::operator=(Time&& other) noexcept {
    if (this != &other) {
        delete m_impl;
        m_impl = other.m_impl;
        other.m_impl = nullptr;
    }
    return *this;
}

bool Time::operator==(Time const& other) const noexcept {
    if (!m_impl || !other.m_impl) {
        return false;
    }
    return m_impl == other.m_impl || m_impl->isEqual(*other.m_impl);
}

bool Time::operator!=(Time const& other) const noexcept { return !(*this == other); }

long long Time::getUndefinedNbTicks() noexcept { return std::numeric_limits<std::int64_t>::max(); }

bool Time::isUndefined() const noexcept { return m_impl->ticks == getUndefinedNbTicks(); }

long long Time::getNbTicks() const noexcept { return m_impl->ticks; }

void Time::setNbTicks(long long nbTicks) noexcept { m_impl->ticks = nbTicks; }

Rational const& Time::getRate() const noexcept { return m_impl->rate; }

void Time::setRate(Rational const& rate) noexcept { m_impl->rate = rate; }

double Time::getValue() const noexcept {
    double const rate = m_impl->rate.getValue();
    return rate > DBL_EPSILON ? static_cast<double>(m_impl->ticks) / rate : 0.0;
}

String Time::toJson() const { return m_impl->toJson(); }

Status Time::fromJson(String const& text) { return m_impl->fromJson(text); }

String Time::Impl::toJson() const {
    return writeJson([this](JsonWriter& writer) {
        writer.StartObject();
        writer.PlainKey(NB_TICKS_TAG);
        writer.Int64(ticks);
        writer.PlainKey(NUMERATOR_TAG);
        writer.Int(rate.getNumerator());
        writer.PlainKey(DENOMINATOR_TAG);
        writer.Uint(rate.getDenominator());
        writer.EndObject();
    });
}

Status Time::Impl::fromJson(String const& text) {
    SmallDocument document;
    std::int32_t newTicks = 0; // narrower than the field: the format reads 32 bits only
    std::int32_t numerator = 0;
    std::int32_t denominator = 0;
    if (parseJson(text.asChar(), document).IsError() || !readInt(document, NB_TICKS_TAG, newTicks) ||
        !readInt(document, NUMERATOR_TAG, numerator) || !readInt(document, DENOMINATOR_TAG, denominator)) {
        return Status::kInvalidTimeStr;
    }
    rate = Rational(numerator, static_cast<std::uint32_t>(denominator));
    ticks = newTicks;
    return Status::kSuccess;
}

} // namespace ORL_0_81
