// SPDX-License-Identifier: MIT
// The end of a list of records that is being built.
#ifndef TRESK_READ_LIST_TAIL_H
#define TRESK_READ_LIST_TAIL_H

// Appends records to a list that is linked through next. Stands for no list until it is given the
// head of one, which must be null then and stay where it is.
template <typename Record> class ListTail
{
  public:
    ListTail() = default;
    explicit ListTail(Record *&head) : end_(&head)
    {
    }

    void append(Record *record)
    {
        *end_ = record;
        end_ = &record->next;
    }

  private:
    Record **end_ = nullptr;
};

#endif
