// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlVideoBufferResolution.h"

#include "internal/orlBoundsJson.h"
#include "internal/orlFloatUtils.h"
#include "internal/orlHidden.h"
#include "rapidotio/internal/orlOtioParsing.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace ORL_0_81 {

namespace Parsing = rapidotio::Parsing;

namespace {

constexpr char WIDTH_TAG[] = "width";
constexpr char HEIGHT_TAG[] = "height";
constexpr char BOUNDS_TAG[] = "bounds";
constexpr char SCAN_FORMAT_TAG[] = "scan_format";
constexpr char BITS_PER_CHANNEL_TAG[] = "bits_per_channel";
constexpr char NUM_CHANNELS_TAG[] = "num_channels";
constexpr char IS_FLOAT_TAG[] = "is_float";
constexpr char IS_BIG_ENDIAN_TAG[] = "is_big_endian";
constexpr char COLOR_SPACE_TAG[] = "color_space";

// The ratio is a test of its own: near a height of 0 it differs where the sizes do not.
bool isNearBounds(Bounds const& left, Bounds const& right) {
    return isNear(left.getCenterX(), right.getCenterX()) && isNear(left.getCenterY(), right.getCenterY()) &&
           isNear(left.getSizeX(), right.getSizeX()) && isNear(left.getSizeY(), right.getSizeY()) &&
           isNear(left.getFrameRatio(), right.getFrameRatio());
}

BoundsValues getValues(Bounds const& bounds) {
    return {bounds.getCenterX(), bounds.getCenterY(), bounds.getSizeX(), bounds.getSizeY()};
}

bool hasFiniteValues(BoundsValues const& values) {
    return std::isfinite(values.centerX) && std::isfinite(values.centerY) && std::isfinite(values.sizeX) &&
           std::isfinite(values.sizeY);
}

BoundsValues readBack(BoundsValues const& values) {
    return {throughText(values.centerX), throughText(values.centerY), throughText(values.sizeX),
            throughText(values.sizeY)};
}

// The format nests what a reader gets of the text of the bounds. Of a text that a number ends half-way that
// is nothing.
void writeNested(JsonWriter& writer, BoundsValues const& values) {
    if (hasFiniteValues(values)) {
        writeBounds(writer, readBack(values));
    } else {
        writer.Null();
    }
}

// Three factors of 32 bits can go beyond 64; unsigned, that is defined.
long long multiply(long long left, long long right) {
    std::uint64_t const product = static_cast<std::uint64_t>(left) * static_cast<std::uint64_t>(right);
    return static_cast<long long>(product);
}

} // namespace

struct ORL_HIDDEN VideoBufferResolution::Impl {
    std::int32_t width = 0;
    std::int32_t height = 0;
    String scanFormat;
    std::int32_t bitsPerChannel = 0;
    std::int32_t numChannels = 0;
    bool isFloat = false;
    bool isBigEndian = false;
    String colorSpace;
    Bounds bounds;

    String toJson() const;
    Status fromJson(String const& text);

    bool isEqual(Impl const& other) const {
        return width == other.width && height == other.height && isNearBounds(bounds, other.bounds) &&
               scanFormat == other.scanFormat && bitsPerChannel == other.bitsPerChannel &&
               numChannels == other.numChannels && isFloat == other.isFloat &&
               isBigEndian == other.isBigEndian && colorSpace == other.colorSpace;
    }

    long long pixelSize() const {
        return (static_cast<long long>(numChannels) * static_cast<long long>(bitsPerChannel) + 7) >> 3;
    }
};

static_assert(sizeof(VideoBufferResolution) == sizeof(void*), "applications know this size");

VideoBufferResolution::VideoBufferResolution() : m_impl(new Impl) {}

VideoBufferResolution::VideoBufferResolution(int width, int height, Bounds const& bounds,
                                             String const& scanFormat, int bitsPerChannel, int numChannels,
                                             bool isFloat, bool isBigEndian, String const& colorSpace)
    : m_impl(new Impl{width, height, scanFormat, bitsPerChannel, numChannels, isFloat, isBigEndian,
                      colorSpace, bounds}) {}

VideoBufferResolution::VideoBufferResolution(VideoBufferResolution const& other)
    : m_impl(new Impl(*other.m_impl)) {}

VideoBufferResolution::VideoBufferResolution(VideoBufferResolution&& other) noexcept : m_impl(other.m_impl) {
    other.m_impl = nullptr;
}

VideoBufferResolution::~VideoBufferResolution() {
    delete m_impl;
    m_impl = nullptr;
}

VideoBufferResolution& VideoBufferResolution::operator=(VideoBufferResolution const& other) noexcept {
    if (this != &other && m_impl && other.m_impl) {
        *m_impl = *other.m_impl;
    }
    return *this;
}

VideoBufferResolution& VideoBufferResolution::operator=(VideoBufferResolution&& other) noexcept {
    if (this != &other) {
        delete m_impl;
        m_impl = other.m_impl;
        other.m_impl = nullptr;
    }
    return *this;
}

bool VideoBufferResolution::operator==(VideoBufferResolution const& other) const noexcept {
    if (!m_impl || !other.m_impl) {
        return false;
    }
    return m_impl == other.m_impl || m_impl->isEqual(*other.m_impl);
}

bool VideoBufferResolution::operator!=(VideoBufferResolution const& other) const noexcept {
    return !(*this == other);
}

bool VideoBufferResolution::isValid() const noexcept {
    return m_impl->width > 0 && m_impl->height > 0 && m_impl->bitsPerChannel > 0 && m_impl->numChannels > 0 &&
           m_impl->bounds.isValid();
}

int VideoBufferResolution::getWidth() const noexcept { return m_impl->width; }

void VideoBufferResolution::setWidth(int width) noexcept { m_impl->width = width; }

int VideoBufferResolution::getHeight() const noexcept { return m_impl->height; }

void VideoBufferResolution::setHeight(int height) noexcept { m_impl->height = height; }

int VideoBufferResolution::getBitsPerChannel() const noexcept { return m_impl->bitsPerChannel; }

void VideoBufferResolution::setBitsPerChannel(int bitsPerChannel) noexcept {
    m_impl->bitsPerChannel = bitsPerChannel;
}

int VideoBufferResolution::getNumChannels() const noexcept { return m_impl->numChannels; }

void VideoBufferResolution::setNumChannels(int numChannels) noexcept { m_impl->numChannels = numChannels; }

bool VideoBufferResolution::isFloat() const noexcept { return m_impl->isFloat; }

void VideoBufferResolution::setIsFloat(bool isFloat) noexcept { m_impl->isFloat = isFloat; }

bool VideoBufferResolution::isBigEndian() const noexcept { return m_impl->isBigEndian; }

void VideoBufferResolution::setIsBigEndian(bool isBigEndian) noexcept { m_impl->isBigEndian = isBigEndian; }

String VideoBufferResolution::getScanFormat() const noexcept { return m_impl->scanFormat; }

void VideoBufferResolution::setScanFormat(String const& scanFormat) noexcept {
    m_impl->scanFormat = scanFormat;
}

String VideoBufferResolution::getColorSpace() const noexcept { return m_impl->colorSpace; }

void VideoBufferResolution::setColorSpace(String const& colorSpace) noexcept {
    m_impl->colorSpace = colorSpace;
}

Bounds VideoBufferResolution::getBounds() const { return m_impl->bounds; }

void VideoBufferResolution::setBounds(Bounds const& bounds) noexcept { m_impl->bounds = bounds; }

double VideoBufferResolution::getCenterX() const noexcept { return m_impl->bounds.getCenterX(); }

void VideoBufferResolution::setCenterX(double centerX) noexcept { m_impl->bounds.setCenterX(centerX); }

double VideoBufferResolution::getCenterY() const noexcept { return m_impl->bounds.getCenterY(); }

void VideoBufferResolution::setCenterY(double centerY) noexcept { m_impl->bounds.setCenterY(centerY); }

double VideoBufferResolution::getSizeX() const noexcept { return m_impl->bounds.getSizeX(); }

void VideoBufferResolution::setSizeX(double sizeX) noexcept { m_impl->bounds.setSizeX(sizeX); }

double VideoBufferResolution::getSizeY() const noexcept { return m_impl->bounds.getSizeY(); }

void VideoBufferResolution::setSizeY(double sizeY) noexcept { m_impl->bounds.setSizeY(sizeY); }

double VideoBufferResolution::getFrameRatio() const noexcept { return m_impl->bounds.getFrameRatio(); }

long long VideoBufferResolution::getPixelSize() const noexcept { return m_impl->pixelSize(); }

long long VideoBufferResolution::getBufferStride() const noexcept {
    return multiply(m_impl->pixelSize(), m_impl->width);
}

long long VideoBufferResolution::getBufferSize() const noexcept {
    return multiply(multiply(m_impl->height, m_impl->width), m_impl->pixelSize());
}

String VideoBufferResolution::toJson() const { return m_impl->toJson(); }

Status VideoBufferResolution::fromJson(String const& text) { return m_impl->fromJson(text); }

String VideoBufferResolution::Impl::toJson() const {
    return writeJson([this](JsonWriter& writer) {
        writer.StartObject();
        writer.PlainKey(WIDTH_TAG);
        writer.Int(width);
        writer.PlainKey(HEIGHT_TAG);
        writer.Int(height);
        writer.PlainKey(BOUNDS_TAG);
        writeNested(writer, getValues(bounds));
        writer.PlainKey(SCAN_FORMAT_TAG);
        writer.String(scanFormat.asChar());
        writer.PlainKey(BITS_PER_CHANNEL_TAG);
        writer.Int(bitsPerChannel);
        writer.PlainKey(NUM_CHANNELS_TAG);
        writer.Int(numChannels);
        writer.PlainKey(IS_FLOAT_TAG);
        writer.Bool(isFloat);
        writer.PlainKey(IS_BIG_ENDIAN_TAG);
        writer.Bool(isBigEndian);
        writer.PlainKey(COLOR_SPACE_TAG);
        writer.String(colorSpace.asChar());
        writer.EndObject();
    });
}

Status VideoBufferResolution::Impl::fromJson(String const& text) {
    SmallDocument document;
    std::int32_t newWidth = 0;
    std::int32_t newHeight = 0;
    std::int32_t newBitsPerChannel = 0;
    std::int32_t newNumChannels = 0;
    std::string newScanFormat;
    std::string newColorSpace;
    bool newIsFloat = false;
    bool newIsBigEndian = false;
    rapidjson::Value::ConstMemberIterator newBounds;
    if (parseJson(text.asChar(), document).IsError() || !Parsing::getInt(document, WIDTH_TAG, newWidth) ||
        !Parsing::getInt(document, HEIGHT_TAG, newHeight) ||
        !Parsing::getInt(document, BITS_PER_CHANNEL_TAG, newBitsPerChannel) ||
        !Parsing::getInt(document, NUM_CHANNELS_TAG, newNumChannels) ||
        !Parsing::getString(document, SCAN_FORMAT_TAG, newScanFormat) ||
        !Parsing::getString(document, COLOR_SPACE_TAG, newColorSpace) ||
        !Parsing::getBool(document, IS_FLOAT_TAG, newIsFloat) ||
        !Parsing::getBool(document, IS_BIG_ENDIAN_TAG, newIsBigEndian) ||
        !Parsing::getObject(document, BOUNDS_TAG, newBounds)) {
        return Status::kInvalidJsonType;
    }

    // Made before anything changes, so that a lack of memory leaves the value as it was.
    String scanFormatText(newScanFormat.c_str());
    String colorSpaceText(newColorSpace.c_str());

    width = newWidth;
    height = newHeight;
    bitsPerChannel = newBitsPerChannel;
    numChannels = newNumChannels;
    scanFormat.swap(scanFormatText);
    colorSpace.swap(colorSpaceText);
    isFloat = newIsFloat;
    isBigEndian = newIsBigEndian;

    // Only now, and with no way back: that bounds which are refused leave the rest taken over is required.
    // What counts is what Bounds::fromJson makes of the text of the object, which a number that is not finite
    // would end half-way, wherever it stands.
    BoundsValues values;
    if (!isFinite(newBounds->value) || !readBounds(newBounds->value, values)) {
        return Status::kInvalidBoundsStr;
    }
    values = readBack(values);
    bounds.setCenterX(values.centerX);
    bounds.setCenterY(values.centerY);
    bounds.setSizeX(values.sizeX);
    bounds.setSizeY(values.sizeY);
    return Status::kSuccess;
}

} // namespace ORL_0_81
