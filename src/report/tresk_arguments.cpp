// SPDX-License-Identifier: MIT
#include "report/tresk_arguments.h"

#include "driver/options.h"
#include "report/text.h"

namespace report
{

namespace
{

bool is_own(const std::string &word)
{
    return word.rfind("--", 0) == 0;
}

// Sorts the words one after the other.
class Splitter
{
  public:
    Splitter(const std::vector<std::string> &words,
             const std::function<bool(const std::string &)> &takes_value)
        : words_(words), takes_value_(takes_value)
    {
    }

    TreskArguments split(bool may_be_tree)
    {
        while (next_ < words_.size()) {
            const std::string &word = words_[next_++];
            if (is_own(word)) {
                take_own(word);
            } else {
                take_for_tresk(word);
            }
        }
        if (files_ < (may_be_tree ? 1 : 2)) {
            throw WrongCall(files_ == 0 ? "two punch files are needed" : "the second punch file is missing");
        }
        return std::move(split_);
    }

  private:
    void take_own(const std::string &word)
    {
        if (word == "--") {
            throw WrongCall("unknown option --");
        }
        split_.own.push_back(word);
        if (word.find('=') == std::string::npos && takes_value_(word) && next_ < words_.size()) {
            split_.own.push_back(words_[next_++]);
        }
    }

    void take_for_tresk(const std::string &word)
    {
        split_.tresk.push_back(word);
        switch (kind_of_argument(word.c_str())) {
        case ArgumentKind::FILE_NAME:
            take_file(word);
            return;
        case ArgumentKind::OPTION:
            split_.options.push_back(word);
            return;
        case ArgumentKind::NEEDS_VALUE:
            if (next_ == words_.size()) {
                throw WrongCall(terminal_line(word) + " needs a value");
            }
            [[fallthrough]];
        case ArgumentKind::OPTION_AND_VALUE:
            split_.options.push_back(word);
            if (next_ < words_.size()) {
                split_.tresk.push_back(words_[next_]);
                split_.options.push_back(words_[next_++]);
            }
            return;
        case ArgumentKind::ENDS_COMPARING:
            throw WrongCall(terminal_line(word) + " compares nothing; use tresk");
        }
    }

    void take_file(const std::string &word)
    {
        if (++files_ > 2) {
            throw WrongCall("a file too many: " + terminal_line(word));
        }
        (files_ == 1 ? split_.golden : split_.regression) = word;
    }

    const std::vector<std::string> &words_;
    const std::function<bool(const std::string &)> &takes_value_;
    TreskArguments split_;
    std::size_t next_ = 0;
    int files_ = 0;
};

} // namespace

TreskArguments split_arguments(const std::vector<std::string> &words,
                               const std::function<bool(const std::string &)> &takes_value, bool may_be_tree)
{
    return Splitter(words, takes_value).split(may_be_tree);
}

} // namespace report
