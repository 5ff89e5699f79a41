// SPDX-License-Identifier: MIT
// A guess at the form of the next number. A simulator prints all numbers of a column in one form, so that
// the length of a number need not be found out before the work on the next one can begin. Most have the
// exponent of the one before as well.
#ifndef TRESK_SUPPORT_NUMBER_FORM_H
#define TRESK_SUPPORT_NUMBER_FORM_H

#include "support/digit_words.h"
#include "support/exact_decimal.h"
#include "support/plain_decimal.h"

#include <cstddef>
#include <cstdint>

// The form of the numbers of one column: perhaps "-", one to eight digits, a point, one to sixteen
// decimals, and an exponent with a sign and two digits, or none. How many digits there are is what the
// numbers met before had.
class NumberForm
{
  public:
    NumberForm();

    // Makes guesses again, also where they were given up, beginning with the form met last.
    void begin_column()
    {
        wrong_ = 0;
    }

    // False after several wrong guesses in a row: there is no use in trying.
    bool is_promising() const
    {
        return wrong_ < kPatience;
    }

    // Takes the number at text for one of this form. Returns the character behind it, or null if it is of
    // another form. The caller must see to it that no number goes on there. kReadAhead bytes must be
    // readable.
    const char *convert(const char *text, double &value)
    {
        const bool negative = *text == '-';
        text += negative ? 1 : 0;
        std::uint64_t digits = 0;
        std::uint64_t wrong = 0; // not 0 if a character is not what it must be
        if (integers_ == 1) {
            digits = load_two(text) ^ kZeroPoint;
            wrong = digits > 9 ? 1 : 0;
        } else {
            take_integers(text, digits, wrong);
        }
        first_decimals_.append(text + integers_ + 1, digits, wrong);
        if (later_decimals_.count != 0) {
            later_decimals_.append(text + integers_ + 1 + kWordDigits, digits, wrong);
        }
        if (wrong != 0) {
            return nullptr;
        }
        if (((load_four(text + exponent_place_) ^ exponent_) & exponent_mask_) != 0 &&
            !take_exponent(text + exponent_place_)) {
            return nullptr;
        }
        const auto whole = static_cast<double>(static_cast<std::int64_t>(digits));
        if (scaling_ == DIVIDE) {
            value = whole / scale_;
        } else if (scaling_ == MULTIPLY) {
            value = whole * scale_;
        } else if (!nearest_by_product(digits, power_, value)) {
            return nullptr;
        }
        value = with_sign(value, negative);
        return text + length_;
    }

    void was_right()
    {
        wrong_ = 0;
    }

    // A number of another shape was met. One alone changes nothing: shorter ones may be among the others.
    void was_wrong(const NumberShape &shape);

  private:
    enum Scaling { DIVIDE, MULTIPLY, SEARCH };

    // The digits that one word holds.
    struct Digits {
        unsigned count = 0;
        unsigned shift = 0;
        std::uint64_t room = 1; // factor that makes room for them behind other digits

        void append(const char *text, std::uint64_t &number, std::uint64_t &wrong) const
        {
            const std::uint64_t digits = load_digits(text) << shift;
            wrong |= mark_others(digits);
            number = number * room + weigh_digits(digits);
        }

        void set(unsigned digits);
    };

    static constexpr unsigned kPatience = 4;
    static constexpr unsigned kZeroPoint = 0x2E30; // "0."

    void take_integers(const char *text, std::uint64_t &digits, std::uint64_t &wrong) const;
    bool take_exponent(const char *text);
    void set_shape(const NumberShape &shape);
    void set_power(int power);

    unsigned integers_ = 1;  // in front of the point
    unsigned wrong_ = 0;     // wrong guesses in a row
    Digits first_decimals_;  // in the first word of them
    Digits later_decimals_;  // in the second
    std::size_t length_ = 0; // of all without the sign
    std::size_t exponent_place_ = 0;
    std::uint32_t exponent_ = 0;      // the text of the exponent met last
    std::uint32_t exponent_mask_ = 0; // 0 if there is none
    int power_ = 0;                   // of ten, with this exponent
    Scaling scaling_ = SEARCH;
    double scale_ = 1.0;
};

#endif
