// SPDX-License-Identifier: MIT
#include "support/number_form.h"

namespace
{

bool can_be(const NumberShape &shape)
{
    return shape.integers >= 1 && shape.integers <= kWordDigits && shape.decimals >= 1 &&
           shape.decimals <= 2 * kWordDigits &&
           (shape.exponent == 0 || (shape.exponent == 2 && shape.has_sign));
}

} // namespace

NumberForm::NumberForm()
{
    set_shape({1, 8, 2, true});
}

void NumberForm::was_wrong(const NumberShape &shape)
{
    if (++wrong_ > 1 && can_be(shape)) {
        set_shape(shape);
    }
}

void NumberForm::Digits::set(unsigned digits)
{
    count = digits;
    shift = 8 * (kWordDigits - digits) % 64;
    room = room_for_digits(digits);
}

void NumberForm::take_integers(const char *text, std::uint64_t &digits, std::uint64_t &wrong) const
{
    const std::uint64_t word = keep_first(load_digits(text), integers_);
    digits = weigh_digits(word);
    wrong = mark_others(word) | static_cast<unsigned char>(text[integers_] ^ '.');
}

// Makes the exponent at text the one expected. False if there is none.
bool NumberForm::take_exponent(const char *text)
{
    if ((text[0] != 'E' && text[0] != 'e') || (text[1] != '-' && text[1] != '+') ||
        !is_decimal_digit(text[2]) || !is_decimal_digit(text[3])) {
        return false;
    }
    const int exponent = (text[2] - '0') * 10 + (text[3] - '0');
    const int decimals = static_cast<int>(first_decimals_.count + later_decimals_.count);
    exponent_ = load_four(text);
    set_power((text[1] == '-' ? -exponent : exponent) - decimals);
    return true;
}

void NumberForm::set_shape(const NumberShape &shape)
{
    const unsigned first = shape.decimals < kWordDigits ? shape.decimals : kWordDigits;
    integers_ = shape.integers;
    first_decimals_.set(first);
    later_decimals_.set(shape.decimals - first);
    exponent_place_ = shape.exponent != 0 ? shape.integers + 1 + shape.decimals : 0;
    length_ = shape.integers + 1 + shape.decimals + (shape.exponent != 0 ? sizeof exponent_ : 0);
    exponent_ = 0;
    exponent_mask_ = shape.exponent != 0 ? ~std::uint32_t{0} : 0;
    set_power(-static_cast<int>(shape.decimals));
}

void NumberForm::set_power(int power)
{
    power_ = power;
    const bool exact = integers_ + first_decimals_.count + later_decimals_.count <= kExactDigits;
    if (exact && power <= 0 && power >= -kExactPower) {
        scaling_ = DIVIDE;
        scale_ = kExactPowers[-power];
    } else if (exact && power > 0 && power <= kExactPower) {
        scaling_ = MULTIPLY;
        scale_ = kExactPowers[power];
    } else {
        scaling_ = SEARCH;
    }
}
