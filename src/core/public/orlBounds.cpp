// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlBounds.h"

#include "internal/orlBoundsJson.h"
#include "internal/orlFloatUtils.h"
#include "internal/orlHidden.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>

namespace ORL_0_81 {

namespace {

constexpr char CENTER_TAG[] = "center";
constexpr char SIZE_TAG[] = "size";

// The other axis comes by value, since it may be the same.
void growAxis(double& center, double& size, double otherCenter, double otherSize) {
    double const lower = std::min(center - size * 0.5, otherCenter - otherSize * 0.5);
    double const upper = std::max(center + size * 0.5, otherCenter + otherSize * 0.5);
    center = (upper + lower) * 0.5;
    size = upper - lower;
}

// False where the writer stops, at a number that is not finite.
template <std::size_t N>
bool writePair(JsonWriter& writer, char const (&key)[N], double x, double y) {
    return writer.PlainKey(key) && writer.StartArray() && writer.Double(x) && writer.Double(y) &&
           writer.EndArray();
}

// Null unless there is an array with at least two elements.
rapidjson::Value const* findPair(rapidjson::Value const& object, char const* key) {
    rapidjson::Value const* const array = findMember(object, key);
    return array && array->IsArray() && array->Size() >= 2 ? array : nullptr;
}

bool isFraction(rapidjson::Value const& value) {
    return value.IsDouble() && std::isfinite(value.GetDouble());
}

bool isFractionPair(rapidjson::Value const& array) { return isFraction(array[0]) && isFraction(array[1]); }

} // namespace

bool writeBounds(JsonWriter& writer, BoundsValues const& values) {
    return writer.StartObject() && writePair(writer, CENTER_TAG, values.centerX, values.centerY) &&
           writePair(writer, SIZE_TAG, values.sizeX, values.sizeY) && writer.EndObject();
}

bool readBounds(rapidjson::Value const& object, BoundsValues& values) {
    rapidjson::Value const* const center = findPair(object, CENTER_TAG);
    rapidjson::Value const* const size = findPair(object, SIZE_TAG);
    if (!center || !size || !isFractionPair(*center) || !isFractionPair(*size)) {
        return false;
    }
    values = {(*center)[0].GetDouble(), (*center)[1].GetDouble(), (*size)[0].GetDouble(),
              (*size)[1].GetDouble()};
    return true;
}

struct ORL_HIDDEN Bounds::Impl : BoundsValues {
    String toJson() const;
    Status fromJson(String const& text);

    bool isEqual(Impl const& other) const {
        return isNear(centerX, other.centerX) && isNear(centerY, other.centerY) &&
               isNear(sizeX, other.sizeX) && isNear(sizeY, other.sizeY);
    }
};

static_assert(sizeof(Bounds) == sizeof(void*), "applications know this size");

Bounds::Bounds() : m_impl(new Impl) {}

Bounds::Bounds(double centerX, double centerY, double sizeX, double sizeY)
    : m_impl(new Impl{{centerX, centerY, sizeX, sizeY}}) {}

Bounds::Bounds(Bounds const& other) : m_impl(new Impl(*other.m_impl)) {}

Bounds::Bounds(Bounds&& other) noexcept : m_impl(other.m_impl) { other.m_impl = nullptr; }

Bounds::~Bounds() {
    delete m_impl;
    m_impl = nullptr;
}

Bounds& Bounds::operator=(Bounds const& other) noexcept {
    if (this != &other && m_impl && other.m_impl) {
        *m_impl = *other.m_impl;
    }
    return *this;
}

Bounds& Bounds::operator=(Bounds&& other) noexcept {
    if (this != &other) {
        delete m_impl;
        m_impl = other.m_impl;
        other.m_impl = nullptr;
    }
    return *this;
}

bool Bounds::operator==(Bounds const& other) const noexcept {
    if (!m_impl || !other.m_impl) {
        return false;
    }
    return m_impl == other.m_impl || m_impl->isEqual(*other.m_impl);
}

bool Bounds::operator!=(Bounds const& other) const noexcept { return !(*this == other); }

double Bounds::getCenterX() const noexcept { return m_impl->centerX; }

void Bounds::setCenterX(double centerX) noexcept { m_impl->centerX = centerX; }

double Bounds::getCenterY() const noexcept { return m_impl->centerY; }

void Bounds::setCenterY(double centerY) noexcept { m_impl->centerY = centerY; }

double Bounds::getSizeX() const noexcept { return m_impl->sizeX; }

void Bounds::setSizeX(double sizeX) noexcept { m_impl->sizeX = sizeX; }

double Bounds::getSizeY() const noexcept { return m_impl->sizeY; }

void Bounds::setSizeY(double sizeY) noexcept { m_impl->sizeY = sizeY; }

double Bounds::getFrameRatio() const noexcept {
    return isNearZero(m_impl->sizeY) ? 1.0 : m_impl->sizeX / m_impl->sizeY;
}

bool Bounds::isValid() const noexcept { return m_impl->sizeX >= DBL_EPSILON && m_impl->sizeY >= DBL_EPSILON; }

void Bounds::grow(Bounds const& other) noexcept {
    growAxis(m_impl->centerX, m_impl->sizeX, other.m_impl->centerX, other.m_impl->sizeX);
    growAxis(m_impl->centerY, m_impl->sizeY, other.m_impl->centerY, other.m_impl->sizeY);
}

String Bounds::toJson() const { return m_impl->toJson(); }

Status Bounds::fromJson(String const& text) { return m_impl->fromJson(text); }

String Bounds::Impl::toJson() const {
    return writeJson([this](JsonWriter& writer) { writeBounds(writer, *this); });
}

Status Bounds::Impl::fromJson(String const& text) {
    SmallDocument document;
    if (parseJson(text.asChar(), document).IsError() || !readBounds(document, *this)) {
        return Status::kInvalidBoundsStr;
    }
    return Status::kSuccess;
}

} // namespace ORL_0_81
