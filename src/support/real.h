// SPDX-License-Identifier: MIT
// Arithmetic whose NaNs have the same sign on every processor, since "nan" and "-nan" differ in a
// transcript. The rule is that of x86: the first operand that is a NaN becomes the result; a NaN that
// no operand brought in (infinity minus infinity, zero times infinity) is negative. Other processors
// make a positive one, and some drop the operand's sign. Needed where a result may be printed without
// passing through std::fabs.
#ifndef TRESK_SUPPORT_REAL_H
#define TRESK_SUPPORT_REAL_H

#include <limits>

// Converts only where it is asked to, so that no operation slips past the rule.
class Real
{
  public:
    explicit Real(double value) : value_(value)
    {
    }
    explicit operator double() const
    {
        return value_;
    }
    friend Real operator+(Real a, Real b)
    {
        return settled(a.value_ + b.value_, a, b);
    }
    friend Real operator-(Real a, Real b)
    {
        return settled(a.value_ - b.value_, a, b);
    }
    friend Real operator*(Real a, Real b)
    {
        return settled(a.value_ * b.value_, a, b);
    }
    friend Real operator/(Real a, Real b)
    {
        return settled(a.value_ / b.value_, a, b);
    }

  private:
    static Real settled(double result, Real a, Real b)
    {
        if (result == result) {
            return Real(result);
        }
        if (a.value_ != a.value_) {
            return a;
        }
        return b.value_ != b.value_ ? b : Real(-std::numeric_limits<double>::quiet_NaN());
    }

    double value_;
};

// For long loops: plain arithmetic where the processor follows the rule by itself. A compiler may swap
// the operands of a sum or a product then, which only two NaNs of different sign could show.
#ifdef __SSE2_MATH__
using QuickReal = double;
constexpr bool kRealIsPlain = true;
#else
using QuickReal = Real;
constexpr bool kRealIsPlain = false;
#endif

#endif
