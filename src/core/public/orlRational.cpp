// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlRational.h"

#include "internal/orlFloatUtils.h"
#include "internal/orlHidden.h"
#include "internal/orlJson.h"

#include <cstdint>

namespace ORL_0_81 {

namespace {

constexpr char NUMERATOR_TAG[] = "numerator";
constexpr char DENOMINATOR_TAG[] = "denominator";

} // namespace

struct ORL_HIDDEN Rational::Impl {
    std::int32_t numerator = 0;
    std::uint32_t denominator = 0;

    String toJson() const;
    Status fromJson(String const& text);

    // One side of a comparison. Its low 32 bits are what is compared, see the header; as unsigned arithmetic
    // it may wrap.
    std::uint32_t crossProduct(Impl const& other) const {
        return static_cast<std::uint32_t>(numerator) * other.denominator;
    }
};

static_assert(sizeof(Rational) == sizeof(void*), "applications know this size");

Rational::Rational() : m_impl(new Impl) {}

Rational::Rational(int numerator, unsigned int denominator) : m_impl(new Impl{numerator, denominator}) {}

Rational::Rational(Rational const& other) : m_impl(new Impl(*other.m_impl)) {}

Rational::Rational(Rational&& other) noexcept : m_impl(other.m_impl) { other.m_impl = nullptr; }

Rational::~Rational() {
    delete m_impl;
    m_impl = nullptr;
}

Rational& Rational::operator=(Rational const& other) noexcept {
    if (this != &other && m_impl && other.m_impl) {
        *m_impl = *other.m_impl;
    }
    return *this;
}

Rational& Rational::operator=(Rational&& other) noexcept {
    if (this != &other) {
        delete m_impl;
        m_impl = other.m_impl;
        other.m_impl = nullptr;
    }
    return *this;
}

int Rational::getNumerator() const noexcept { return m_impl->numerator; }

void Rational::setNumerator(int numerator) noexcept { m_impl->numerator = numerator; }

unsigned int Rational::getDenominator() const noexcept { return m_impl->denominator; }

void Rational::setDenominator(unsigned int denominator) noexcept { m_impl->denominator = denominator; }

double Rational::getValue() const noexcept {
    if (m_impl->denominator == 0) {
        return 0.0;
    }
    return static_cast<double>(m_impl->numerator) / static_cast<double>(m_impl->denominator);
}

bool Rational::operator==(Rational const& other) const noexcept {
    return m_impl->crossProduct(*other.m_impl) == other.m_impl->crossProduct(*m_impl);
}

bool Rational::operator!=(Rational const& other) const noexcept { return !(*this == other); }

bool Rational::operator<(Rational const& other) const noexcept {
    return m_impl->crossProduct(*other.m_impl) < other.m_impl->crossProduct(*m_impl);
}

bool Rational::operator<=(Rational const& other) const noexcept {
    return m_impl->crossProduct(*other.m_impl) <= other.m_impl->crossProduct(*m_impl);
}

bool Rational::operator==(double value) const noexcept { return isNear(getValue(), value); }

bool Rational::operator<(double value) const noexcept { return getValue() < value; }

bool Rational::operator<=(double value) const noexcept { return *this < value || *this == value; }

String Rational::toJson() const { return m_impl->toJson(); }

Status Rational::fromJson(String const& text) { return m_impl->fromJson(text); }

String Rational::Impl::toJson() const {
    return writeJson([this](JsonWriter& writer) {
        writer.StartObject();
        writer.PlainKey(NUMERATOR_TAG);
        writer.Int(numerator);
        writer.PlainKey(DENOMINATOR_TAG);
        writer.Uint(denominator);
        writer.EndObject();
    });
}

Status Rational::Impl::fromJson(String const& text) {
    SmallDocument document;
    std::int32_t newNumerator = 0;
    std::int32_t newDenominator = 0; // read as signed, like every integer
    if (parseJson(text.asChar(), document).IsError() || !readInt(document, NUMERATOR_TAG, newNumerator) ||
        !readInt(document, DENOMINATOR_TAG, newDenominator)) {
        return Status::kInvalidRationalStr;
    }
    numerator = newNumerator;
    denominator = static_cast<std::uint32_t>(newDenominator);
    return Status::kSuccess;
}

} // namespace ORL_0_81
