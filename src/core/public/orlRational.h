// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_RATIONAL_H
#define ORL_RATIONAL_H

#include "orlExport.h"
#include "orlStatus.h"
#include "orlString.h"

namespace ORL_0_81 {

/// An exact rate, such as 24000/1001 frames per second: a signed numerator over an unsigned denominator.
///
/// Any two values are allowed and nothing reduces them: 48/2 stays 48/2. A denominator of 0 means that no
/// rate is known; 0/0 is the default. One pointer in size, to fields of its own: a copy is independent.
///
/// **Moved-from objects** may only be destroyed, assigned a moved value, or stand on either side of a copy
/// assignment, which then does nothing. Anything else that is asked of them is a caller's fault.
///
/// **Failure.** Only fromJson() reports one. Constructors, toJson() and fromJson() may throw
/// `std::bad_alloc`, which leaves the object as it was; what is marked noexcept never fails.
///
/// **Thread safety.** No shared state: one object has one writer or many readers at a time.
///
/// **Cost.** A constructor allocates once. Comparing, reading and assigning never allocate.
class ORL_CORE_EXPORT Rational {
public:
    /// 0/0: no rate is known.
    Rational();

    /// Any two numbers; nothing is reduced.
    Rational(int numerator, unsigned int denominator);

    /// Copies both values. `other` must not be moved-from.
    Rational(Rational const& other);
    /// Takes the other's value and leaves it moved-from.
    Rational(Rational&& other) noexcept;
    ~Rational();

    /// Copies both values. Does nothing if either object was moved from.
    Rational& operator=(Rational const& other) noexcept;

    /// Takes the other's value and leaves it moved-from. Self-assignment does nothing.
    Rational& operator=(Rational&& other) noexcept;

    /// @{
    /// The two numbers as they were given.
    int getNumerator() const noexcept;
    void setNumerator(int numerator) noexcept;
    unsigned int getDenominator() const noexcept;
    void setDenominator(unsigned int denominator) noexcept;
    /// @}

    /// The numerator divided by the denominator; 0.0 for a denominator of 0.
    double getValue() const noexcept;

    /// \name Comparison of two rates
    /// @{

    /// By the cross products, each cut to its low 32 bits and taken as unsigned. Therefore:
    /// - equality is by value: 48/2 equals 24/1, and 24000/1001 equals 48000/2002;
    /// - 0/0 equals every rate, which no other rate does;
    /// - the order is wrong for negative numerators, whose products are large as unsigned values, and
    ///   wherever a product needs more than 32 bits.
    ///
    /// Callers rely on each of these.
    bool operator==(Rational const& other) const noexcept;
    bool operator!=(Rational const& other) const noexcept;
    bool operator<(Rational const& other) const noexcept;
    bool operator<=(Rational const& other) const noexcept;

    /// @}
    /// \name Comparison with a value
    /// @{

    /// What getValue() gives is compared. Equal are values that differ by less than DBL_EPSILON; `<` knows no
    /// tolerance. All are false for a value that is not a number.
    bool operator==(double value) const noexcept;
    bool operator<(double value) const noexcept;

    /// True when below or equal in the sense of the two others.
    bool operator<=(double value) const noexcept;

    /// @}
    /// \name Text form
    /// @{

    /// A compact JSON object: `{"numerator":24000,"denominator":1001}`.
    String toJson() const;

    /// Reads what toJson() writes, with the members in any order and any others beside them.
    ///
    /// Both members must be JSON integers in the range of a signed 32-bit value. So a denominator above
    /// 2147483647, which toJson() does write, is refused, and a negative one is taken as unsigned by its
    /// bits: -1 becomes 4294967295. Of members with the same name the first counts. The text ends at its
    /// first NUL.
    ///
    /// \returns kSuccess; or kInvalidRationalStr for a text that is no JSON, whose root is no object, that is
    ///     nested deeper than 1000 levels, or where a member is missing or unfit. The object then keeps its
    ///     value.
    Status fromJson(String const& text);

    /// @}

private:
    struct Impl;

    Impl* m_impl; // owned; null exactly when moved from
};

} // namespace ORL_0_81

#endif // ORL_RATIONAL_H
