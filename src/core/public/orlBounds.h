// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_BOUNDS_H
#define ORL_BOUNDS_H

#include "orlExport.h"
#include "orlStatus.h"
#include "orlString.h"

namespace ORL_0_81 {

/// A rectangle in the floating-point image space: a centre and a full size.
///
/// Any values are allowed, negative sizes and values that are not finite too; nothing normalises them. One
/// pointer in size, to fields of its own: a copy is independent.
///
/// **Moved-from objects** may only be destroyed, assigned a moved value, compared (they are unequal to
/// everything), or stand on either side of a copy assignment, which then does nothing. Anything else that is
/// asked of them is a caller's fault.
///
/// **Failure.** Only fromJson() reports one. Constructors, toJson() and fromJson() may throw
/// `std::bad_alloc`, which leaves the object as it was; what is marked noexcept never fails.
///
/// **Thread safety.** No shared state: one object has one writer or many readers at a time.
///
/// **Cost.** A constructor allocates once. Comparing, reading, assigning and growing never allocate.
class ORL_CORE_EXPORT Bounds {
public:
    /// All four values are 0.0. Such bounds are not valid.
    Bounds();

    /// Any four numbers; isValid() tells whether they make an area.
    Bounds(double centerX, double centerY, double sizeX, double sizeY);

    /// Copies all values. `other` must not be moved-from.
    Bounds(Bounds const& other);
    /// Takes the other's value and leaves it moved-from.
    Bounds(Bounds&& other) noexcept;
    ~Bounds();

    /// Copies all values. Does nothing if either object was moved from.
    Bounds& operator=(Bounds const& other) noexcept;

    /// Takes the other's value and leaves it moved-from. Self-assignment does nothing.
    Bounds& operator=(Bounds&& other) noexcept;

    /// True when each of the four values differs from the other's by less than DBL_EPSILON, whatever their
    /// size. So a value that is infinite or not a number makes two objects unequal; an object equals itself
    /// even then. False if either object was moved from, even for one compared with itself.
    bool operator==(Bounds const& other) const noexcept;

    /// The opposite of `==`.
    bool operator!=(Bounds const& other) const noexcept;

    /// @{
    /// The four values, in the units of the image space. Any number is taken.
    double getCenterX() const noexcept;
    void setCenterX(double centerX) noexcept;
    double getCenterY() const noexcept;
    void setCenterY(double centerY) noexcept;
    double getSizeX() const noexcept;
    void setSizeX(double sizeX) noexcept;
    double getSizeY() const noexcept;
    void setSizeY(double sizeY) noexcept;
    /// @}

    /// The width divided by the height; 1.0 for a height within DBL_EPSILON of 0.
    double getFrameRatio() const noexcept;

    /// True when both sizes are at least DBL_EPSILON.
    bool isValid() const noexcept;

    /// Makes this the smallest rectangle that holds both. The other always counts, valid or not: default
    /// bounds that grow take in the point (0, 0).
    void grow(Bounds const& other) noexcept;

    /// A compact JSON object of two arrays, x before y: `{"center":[0.5,0.5],"size":[2.0,1.0]}`.
    ///
    /// JSON has no word for a value that is not finite: the text ends where the first of them would stand,
    /// and no fromJson() takes it.
    String toJson() const;

    /// Reads what toJson() writes, with the members in any order and any others beside them.
    ///
    /// Both arrays must have two elements; more are not looked at. The numbers must be finite and written as
    /// fractions: `[0.0,1.0]`, since `[0,1]` is refused. (An integer beyond 64 bits is a fraction to the
    /// parser.) Of members with the same name the first counts. The text ends at its first NUL.
    ///
    /// \returns kSuccess; or kInvalidBoundsStr for a text that is no JSON, whose root is no object, that is
    ///     nested deeper than 1000 levels, or where a member is missing or unfit. The object then keeps its
    ///     value.
    Status fromJson(String const& text);

private:
    struct Impl;

    Impl* m_impl; // owned; null exactly when moved from
};

} // namespace ORL_0_81

#endif // ORL_BOUNDS_H
