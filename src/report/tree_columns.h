// SPDX-License-Identifier: MIT
// Rows of a page as JSON in columns, which is a third of the size of a list of objects.
#ifndef TRESK_REPORT_TREE_COLUMNS_H
#define TRESK_REPORT_TREE_COLUMNS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace report
{

// A JSON array that grows, safe within a script element.
class JsonColumn
{
  public:
    JsonColumn &text(std::string_view bytes);
    JsonColumn &count(std::int64_t value);
    JsonColumn &json(std::string_view value);

    // Four digits, which is what the page shows; "nan" and infinities as texts, null of nothing.
    JsonColumn &real(std::optional<double> value);

    std::size_t size() const
    {
        return text_.size();
    }
    std::string array() const
    {
        return text_.empty() ? "[]" : text_ + ']';
    }

  private:
    std::string text_;
};

// Texts that come again and again, by number.
class JsonWords
{
  public:
    std::int64_t number_of(std::string_view bytes);
    const JsonColumn &words() const
    {
        return words_;
    }

  private:
    std::unordered_map<std::string, std::int64_t> numbers_;
    JsonColumn words_;
};

} // namespace report

#endif
