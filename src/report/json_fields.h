// SPDX-License-Identifier: MIT
// One JSON object in one line, field by field: a result may have more findings than a tree of all of them
// should take memory.
#ifndef TRESK_REPORT_JSON_FIELDS_H
#define TRESK_REPORT_JSON_FIELDS_H

#include "report/text.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace report
{

class JsonFields
{
  public:
    // A value that is JSON already.
    JsonFields &add(std::string_view name, const std::string &json)
    {
        text_ += text_.empty() ? '{' : ',';
        text_ += json_text(name);
        text_ += ':';
        text_ += json;
        return *this;
    }
    JsonFields &add_text(std::string_view name, std::string_view bytes)
    {
        return add(name, json_text(bytes));
    }
    JsonFields &add_real(std::string_view name, double value)
    {
        return add(name, json_number(value));
    }
    JsonFields &add_count(std::string_view name, std::int64_t value)
    {
        return add(name, std::to_string(value));
    }
    JsonFields &add_flag(std::string_view name, bool value)
    {
        return add(name, value ? "true" : "false");
    }
    std::string object() const
    {
        return text_.empty() ? "{}" : text_ + '}';
    }

  private:
    std::string text_;
};

// ["a","b"] of texts.
template <typename Texts> std::string json_list(const Texts &texts)
{
    std::string list;
    for (const auto &text : texts) {
        list += list.empty() ? "[" : ",";
        list += json_text(text);
    }
    return list.empty() ? "[]" : list + ']';
}

} // namespace report

#endif
