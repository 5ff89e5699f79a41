// SPDX-License-Identifier: MIT
// Pairing of reruns and modifies by number.
#ifndef TRESK_DRIVER_NUMBER_INDEX_H
#define TRESK_DRIVER_NUMBER_INDEX_H

#include <unordered_map>

// Finds the first record of a number in a list. Matched records are found again: a second record of
// a number in the reference file meets the same partner.
template <typename Form> class NumberIndex
{
  public:
    // Records numbered no_partner are never found: the number is the mark for none.
    NumberIndex(Form *list, int no_partner)
    {
        for (Form *form = list; form != nullptr; form = form->next) {
            first_.emplace(form->number, form);
        }
        first_.erase(no_partner);
    }

    Form *find(int number) const
    {
        const auto found = first_.find(number);
        return found != first_.end() ? found->second : nullptr;
    }

  private:
    std::unordered_map<int, Form *> first_;
};

// Calls report(record) for every record of the list that is not matched. Returns the bits of all.
template <typename Form, typename Report> unsigned report_unmatched(const Form *list, Report report)
{
    unsigned bits = 0;
    for (const Form *form = list; form != nullptr; form = form->next) {
        if (!form->matched) {
            bits |= report(*form);
        }
    }
    return bits;
}

#endif
