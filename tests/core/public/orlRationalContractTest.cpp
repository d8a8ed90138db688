// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlRational.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace ORL_0_81;

template <class Left, class Right, class = void>
struct HasGreater : std::false_type {};
template <class Left, class Right>
struct HasGreater<Left, Right, std::void_t<decltype(std::declval<Left>() > std::declval<Right>())>>
    : std::true_type {};

template <class Left, class Right, class = void>
struct HasGreaterEqual : std::false_type {};
template <class Left, class Right>
struct HasGreaterEqual<Left, Right, std::void_t<decltype(std::declval<Left>() >= std::declval<Right>())>>
    : std::true_type {};

template <class Left, class Right, class = void>
struct HasNotEqual : std::false_type {};
template <class Left, class Right>
struct HasNotEqual<Left, Right, std::void_t<decltype(std::declval<Left>() != std::declval<Right>())>>
    : std::true_type {};

TEST(RationalContract, OffersNoComparisonBeyondTheOnesItHas) {
    EXPECT_FALSE((HasGreater<Rational, Rational>::value));
    EXPECT_FALSE((HasGreaterEqual<Rational, Rational>::value));
    EXPECT_FALSE((HasGreater<Rational, double>::value));
    EXPECT_FALSE((HasGreaterEqual<Rational, double>::value));
    EXPECT_FALSE((HasNotEqual<Rational, double>::value));
    EXPECT_TRUE((HasNotEqual<Rational, Rational>::value));
}

TEST(RationalContract, ComparesWithAValueByItsOwnValueWhateverTheFields) {
    double const infinity = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    int const numerators[] = {0, 1, -1, 24000, INT_MAX, INT_MIN};
    unsigned int const denominators[] = {0, 1, 3, 1001, UINT_MAX};
    for (int const numerator : numerators) {
        for (unsigned int const denominator : denominators) {
            Rational const rate(numerator, denominator);
            double const v = denominator == 0 ? 0.0 : double(numerator) / double(denominator);
            ASSERT_EQ(rate.getValue(), v);
            for (double const d :
                 {0.0, -0.0, v, v + DBL_EPSILON, v - DBL_EPSILON, v + DBL_EPSILON / 2, v - DBL_EPSILON / 2,
                  std::nextafter(v, infinity), std::nextafter(v, -infinity), 24.0, infinity, -infinity, nan,
                  DBL_MAX, DBL_MIN, DBL_EPSILON}) {
                SCOPED_TRACE(std::to_string(numerator) + "/" + std::to_string(denominator) + " and " +
                             std::to_string(d));
                EXPECT_EQ(rate == d, std::fabs(v - d) < DBL_EPSILON);
                EXPECT_EQ(rate < d, v < d);
                EXPECT_EQ(rate <= d, v < d || std::fabs(v - d) < DBL_EPSILON);
            }
        }
    }
}

} // namespace
