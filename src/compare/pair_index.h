// SPDX-License-Identifier: MIT
// Pairing by name in linear time. An index over the unmatched records of a list gives for a name and
// kind exactly the record that a search from the head of the list would find: the first, in list
// order, that is not yet matched.
#ifndef TRESK_COMPARE_PAIR_INDEX_H
#define TRESK_COMPARE_PAIR_INDEX_H

#include "read/records.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <vector>

// What must agree besides the name.
inline int pair_kind(const Isoln &value)
{
    return value.type;
}

inline int pair_kind(const Wform &wform)
{
    return wform.analysis;
}

template <typename Record> class PairIndex
{
  public:
    void add(Record *record)
    {
        entries_.push_back({record, record->name, hash_of(record->name, pair_kind(*record)), kNone});
    }

    // Finds the partner of a record, marks both as matched and returns it; null when there is none.
    // The first call ends the time of add.
    Record *match(Record &other)
    {
        const std::uint32_t place = take(other);
        return place != kNone ? entries_[place].record : nullptr;
    }

    static constexpr std::uint32_t kNone = UINT32_MAX;

    // The same, but returns the place of the partner among all that were added; kNone for none.
    std::uint32_t take(Record &other)
    {
        if (buckets_.empty()) {
            build();
        }
        const std::size_t hash = hash_of(other.name, pair_kind(other));
        for (std::uint32_t *link = &bucket(hash); *link != kNone; link = &entries_[*link].next) {
            const std::uint32_t place = *link;
            const Entry &entry = entries_[place];
            if (entry.hash == hash && std::strcmp(entry.name, other.name) == 0 &&
                pair_kind(*entry.record) == pair_kind(other)) {
                *link = entry.next;
                other.matched = 1;
                entry.record->matched = 1;
                return place;
            }
        }
        return kNone;
    }

    // Lets the record at a place be found again. Quick where the last one taken is put back first.
    void put_back(std::uint32_t place)
    {
        std::uint32_t *link = &bucket(entries_[place].hash);
        while (*link < place) {
            link = &entries_[*link].next;
        }
        entries_[place].next = *link;
        *link = place;
    }

  private:
    struct Entry {
        Record *record;
        const char *name; // that of the record, which need not be fetched from memory to compare it
        std::size_t hash;
        std::uint32_t next; // entry behind this one in its bucket
    };

    static std::size_t hash_of(const char *name, int kind)
    {
        return std::hash<std::string_view>{}(name)*31 + static_cast<std::size_t>(kind);
    }

    std::uint32_t &bucket(std::size_t hash)
    {
        return buckets_[hash & (buckets_.size() - 1)];
    }

    // Filled from the back, so that each bucket holds its entries in list order.
    void build()
    {
        std::size_t size = 1;
        while (size < entries_.size() * 2) {
            size *= 2;
        }
        buckets_.assign(size, kNone);
        for (std::size_t i = entries_.size(); i-- > 0;) {
            std::uint32_t &head = bucket(entries_[i].hash);
            entries_[i].next = head;
            head = static_cast<std::uint32_t>(i);
        }
    }

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> buckets_;
};

#endif
