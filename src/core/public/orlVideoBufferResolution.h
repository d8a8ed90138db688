// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_VIDEO_BUFFER_RESOLUTION_H
#define ORL_VIDEO_BUFFER_RESOLUTION_H

#include "orlBounds.h"
#include "orlExport.h"
#include "orlStatus.h"
#include "orlString.h"

namespace ORL_0_81 {

/// The memory form of one image: its dimensions in pixels, the number, depth and kind of its samples, two
/// free texts, and the area that it covers in the image space. Holds no pixels.
///
/// Any values are allowed; isValid() tells whether they make sense. One pointer in size, to fields of its
/// own: a copy is independent.
///
/// **Moved-from objects** may only be destroyed, assigned a moved value, compared (they are unequal to
/// everything), or stand on either side of a copy assignment, which then does nothing. Anything else that is
/// asked of them is a caller's fault.
///
/// **Failure.** Only fromJson() reports one. Constructors, getBounds(), toJson() and fromJson() may throw
/// `std::bad_alloc`, which leaves the object as it was; what is marked noexcept never fails.
///
/// **Thread safety.** No shared state of its own, while its texts may be shared as String tells: one object
/// has one writer or many readers at a time.
///
/// **Cost.** A constructor allocates twice; the texts are shared with the caller's. Comparing, assigning and
/// all other reading but that of the bounds as a whole never allocate.
class ORL_CORE_EXPORT VideoBufferResolution {
public:
    /// Numbers of 0, empty texts, no floating-point samples, little endian, default bounds.
    VideoBufferResolution();

    /// Keeps copies. `bounds` must not be moved-from.
    VideoBufferResolution(int width, int height, Bounds const& bounds, String const& scanFormat,
                          int bitsPerChannel, int numChannels, bool isFloat, bool isBigEndian,
                          String const& colorSpace);

    /// Copies all values. `other` must not be moved-from.
    VideoBufferResolution(VideoBufferResolution const& other);
    /// Takes the other's value and leaves it moved-from.
    VideoBufferResolution(VideoBufferResolution&& other) noexcept;
    ~VideoBufferResolution();

    /// Copies all values. Does nothing if either object was moved from.
    VideoBufferResolution& operator=(VideoBufferResolution const& other) noexcept;

    /// Takes the other's value and leaves it moved-from. Self-assignment does nothing.
    VideoBufferResolution& operator=(VideoBufferResolution&& other) noexcept;

    /// True when all values are the same; those of the bounds, and their frame ratios too, may differ by less
    /// than DBL_EPSILON. An object equals itself even where its bounds do not. False if either object was
    /// moved from, even for one compared with itself.
    bool operator==(VideoBufferResolution const& other) const noexcept;

    /// The opposite of `==`.
    bool operator!=(VideoBufferResolution const& other) const noexcept;

    /// True when width, height, bits per channel and number of channels are above 0 and the bounds are valid.
    bool isValid() const noexcept;

    /// \name Dimensions, in pixels
    /// @{

    /// Any number is taken.
    int getWidth() const noexcept;
    void setWidth(int width) noexcept;
    int getHeight() const noexcept;
    void setHeight(int height) noexcept;

    /// @}
    /// \name Samples
    /// @{

    /// Bits of one sample.
    int getBitsPerChannel() const noexcept;
    void setBitsPerChannel(int bitsPerChannel) noexcept;

    /// Samples of one pixel.
    int getNumChannels() const noexcept;
    void setNumChannels(int numChannels) noexcept;

    /// Whether samples are floating-point.
    bool isFloat() const noexcept;
    void setIsFloat(bool isFloat) noexcept;

    /// The byte order of the samples.
    bool isBigEndian() const noexcept;
    void setIsBigEndian(bool isBigEndian) noexcept;

    /// @}
    /// \name Free texts; nothing here interprets them
    /// @{

    /// A copy shares its text.
    String getScanFormat() const noexcept;
    void setScanFormat(String const& scanFormat) noexcept;
    String getColorSpace() const noexcept;
    void setColorSpace(String const& colorSpace) noexcept;

    /// @}
    /// \name Area in the image space
    /// @{

    /// A copy.
    Bounds getBounds() const;

    /// Does nothing if `bounds` was moved from.
    void setBounds(Bounds const& bounds) noexcept;

    /// The values of the bounds.
    double getCenterX() const noexcept;
    void setCenterX(double centerX) noexcept;

    double getCenterY() const noexcept;
    void setCenterY(double centerY) noexcept;

    double getSizeX() const noexcept;
    void setSizeX(double sizeX) noexcept;

    double getSizeY() const noexcept;
    void setSizeY(double sizeY) noexcept;

    /// The frame ratio of the bounds; width and height have no say in it.
    double getFrameRatio() const noexcept;

    /// @}
    /// \name Sizes, in bytes
    /// Computed in 64 bits from whatever the fields are, negative ones too; the result counts modulo 2 to the
    /// power of 64. No real image comes near that.
    /// @{

    /// One pixel: all its samples, rounded up to whole bytes. Three channels of 10 bits make 4 bytes.
    long long getPixelSize() const noexcept;

    /// One row, whose pixels are whole bytes each and which has no padding.
    long long getBufferStride() const noexcept;

    /// All rows.
    long long getBufferSize() const noexcept;

    /// @}
    /// \name Text form
    /// @{

    /// A compact JSON object with "width", "height", "bounds", "scan_format", "bits_per_channel",
    /// "num_channels", "is_float", "is_big_endian" and "color_space", in this order. "bounds" is the object
    /// of Bounds::toJson(); where that has none to give, since a value is not finite, it is null, which
    /// fromJson() refuses. The texts go up to their first NUL.
    String toJson() const;

    /// Reads what toJson() writes, with the members in any order and any others beside them.
    ///
    /// Numbers must be JSON integers in the range of a signed 32-bit value; texts go up to their first NUL.
    /// Of members with the same name the first counts. The text ends at its first NUL.
    ///
    /// \returns kSuccess; or kInvalidJsonType for a text that is no JSON, whose root is no object, that is
    ///     nested deeper than 1000 levels, or where a member is missing or of another type; the object then
    ///     keeps its value. Or kInvalidBoundsStr where only the object "bounds" is not as Bounds::fromJson()
    ///     wants it: **all but the bounds has then been taken over**, and the bounds stay as they were.
    Status fromJson(String const& text);

    /// @}

private:
    struct Impl;

    Impl* m_impl; // owned; null exactly when moved from
};

} // namespace ORL_0_81

#endif // ORL_VIDEO_BUFFER_RESOLUTION_H
