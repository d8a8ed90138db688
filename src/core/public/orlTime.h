// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TIME_H
#define ORL_TIME_H

#include "orlExport.h"
#include "orlRational.h"
#include "orlStatus.h"
#include "orlString.h"

namespace ORL_0_81 {

/// A position or a duration on a media timeline: a number of ticks at a rate of ticks per second.
///
/// 48 ticks at 24/1 are 2 seconds. One reserved number of ticks, the largest, marks a time as undefined; a
/// default Time is not undefined, it has 0 ticks at 0/0. One pointer in size, to fields of its own: a copy is
/// independent.
///
/// **Moved-from objects** may only be destroyed, assigned a moved value, or compared: they are unequal to
/// everything. Anything else that is asked of them is a caller's fault.
///
/// **Failure.** Only fromJson() reports one. Constructors, toJson() and fromJson() may throw
/// `std::bad_alloc`, which leaves the object as it was; what is marked noexcept never fails.
///
/// **Thread safety.** No shared state: one object has one writer or many readers at a time.
///
/// **Cost.** A constructor allocates twice. Comparing, reading and assigning never allocate.
class ORL_CORE_EXPORT Time {
public:
    /// 0 ticks at 0/0.
    Time();

    /// Keeps a copy of the rate.
    Time(long long nbTicks, Rational const& rate);

    /// Copies ticks and rate. `other` must not be moved-from.
    Time(Time const& other);
    /// Takes the other's value and leaves it moved-from.
    Time(Time&& other) noexcept;
    ~Time();

    /// Copies ticks and rate. Neither object may be moved-from.
    Time& operator=(Time const& other) noexcept;

    /// Takes the other's value and leaves it moved-from. Self-assignment does nothing.
    Time& operator=(Time&& other) noexcept;

    /// True when the ticks are the same and the rates are equal as Rational compares them. So 24 ticks at
    /// 24/1 equal 24 ticks at 48/2, and 24 ticks at 0/0, but not 48 ticks at 48/1, though these last as long.
    /// False if either object was moved from, even for one compared with itself.
    bool operator==(Time const& other) const noexcept;

    /// The opposite of `==`.
    bool operator!=(Time const& other) const noexcept;

    /// The number of ticks that means undefined: 9223372036854775807.
    static long long getUndefinedNbTicks() noexcept;

    /// True for the undefined number of ticks, whatever the rate.
    bool isUndefined() const noexcept;

    /// How many ticks of the rate.
    long long getNbTicks() const noexcept;

    /// The rate stays as it is.
    void setNbTicks(long long nbTicks) noexcept;

    /// Valid until this object is moved from, assigned a moved value, or destroyed.
    Rational const& getRate() const noexcept;

    /// The ticks stay as they are; nothing is converted. Does nothing if `rate` was moved from.
    void setRate(Rational const& rate) noexcept;

    /// The time in seconds: the ticks divided by the value of the rate, or 0.0 where that is not above
    /// DBL_EPSILON. The undefined ticks are a number like any other here.
    double getValue() const noexcept;

    /// A compact JSON object, whose ticks may need 64 bits:
    /// `{"number_of_ticks":48,"numerator":24,"denominator":1}`.
    String toJson() const;

    /// Reads what toJson() writes, with the members in any order and any others beside them.
    ///
    /// All three members must be JSON integers in the range of a signed 32-bit value. So an undefined time,
    /// or any other beyond 2147483647 ticks, does not come back from its own text; for the denominator see
    /// Rational::fromJson(). Of members with the same name the first counts. The text ends at its first NUL.
    ///
    /// \returns kSuccess; or kInvalidTimeStr for a text that is no JSON, whose root is no object, that is
    ///     nested deeper than 1000 levels, or where a member is missing or unfit. The object then keeps its
    ///     value.
    Status fromJson(String const& text);

private:
    struct Impl;

    Impl* m_impl; // owned; null exactly when moved from
};

} // namespace ORL_0_81

#endif // ORL_TIME_H
