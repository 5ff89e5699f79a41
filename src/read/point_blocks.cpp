// SPDX-License-Identifier: MIT
#include "read/point_blocks.h"

#include "read/binary_points.h"
#include "support/file_bytes.h"
#include "support/memory.h"

#include <utility>

// Bytes are fetched in pieces, which may hold the waveforms behind in the file, too: mostly they are compared
// in the order in which they were written. They are handed out in blocks whose columns stay in the nearest
// cache.
struct BlockWalk::Room {
    static constexpr std::size_t kBytes = std::size_t{1} << 18;
    static constexpr std::size_t kPoints = 50 * kGroupPoints;

    alignas(16) double x[kPoints];
    alignas(16) double val[kPoints];
    char bytes[kBytes];
    FileBytes *file;     // that the bytes are from
    const char *next;    // first byte that was not decoded yet
    std::size_t held;    // bytes from there on
    std::int64_t offset; // in the file, of the byte behind them
    std::size_t ahead;   // bytes to fetch behind a waveform; more with each that follows in the file
    Room *free;

    // Offset of the next byte.
    std::int64_t place() const
    {
        return offset - static_cast<std::int64_t>(held);
    }
};

namespace
{

using Room = BlockWalk::Room;

Room *free_rooms = nullptr; // of walks that have ended

// A room, one with bytes of the file if there is one.
Room *take_room(const FileBytes *file)
{
    Room **room = &free_rooms;
    while (*room != nullptr && (*room)->file != file) {
        room = &(*room)->free;
    }
    if (*room == nullptr) {
        room = &free_rooms;
    }
    if (*room != nullptr) {
        return std::exchange(*room, (*room)->free);
    }
    auto *fresh = static_cast<Room *>(f_realloc_large(nullptr, sizeof(Room)));
    fresh->file = nullptr;
    return fresh;
}

// Goes to an offset of a file. Bytes that are there already are used.
void move_to(Room &room, FileBytes *file, std::int64_t offset)
{
    constexpr std::int64_t kBetween = 4096; // bytes at most, of what stands between a waveform and the next
    constexpr std::size_t kLeastAhead = 8192;
    const std::int64_t skipped = room.file == file ? offset - room.place() : -1;
    const bool follows = skipped >= 0 && skipped < kBetween;
    if (follows && skipped <= static_cast<std::int64_t>(room.held)) {
        room.next += skipped;
        room.held -= static_cast<std::size_t>(skipped);
    } else {
        room.held = 0;
        room.offset = offset;
    }
    room.file = file;
    room.ahead = follows ? std::clamp(2 * room.ahead, kLeastAhead, Room::kBytes) : 0;
}

// The bytes of the points that are left, and some of those known to follow: signals are printed (-d 1) while
// the file is still being read.
std::size_t bytes_to_fetch(const Room &room, int format, std::int64_t left)
{
    const std::size_t needed = binary_length(format, static_cast<std::size_t>(left));
    const auto known = static_cast<std::size_t>(std::max<std::int64_t>(room.file->end - room.place(), 0));
    return std::min(Room::kBytes, std::max(needed, std::min(room.ahead, known)));
}

} // namespace

BlockWalk::BlockWalk(const Wform &wform) : wform_(wform), room_(nullptr), left_(0)
{
    if (wform.val != nullptr) {
        left_ = wform.count;
    } else if (wform.in_file != nullptr) {
        left_ = wform.count;
        room_ = take_room(wform.in_file->file);
        move_to(*room_, wform.in_file->file, wform.in_file->offset);
    }
}

BlockWalk::~BlockWalk()
{
    if (room_ != nullptr) {
        room_->free = std::exchange(free_rooms, room_);
    }
}

PointBlock BlockWalk::next_in_file()
{
    Room &room = *room_;
    const auto count = static_cast<std::size_t>(std::min<std::int64_t>(left_, Room::kPoints));
    const std::size_t needed = binary_length(wform_.format, count);
    if (room.held < needed) {
        const std::int64_t place = room.place();
        room.held = bytes_to_fetch(room, wform_.format, left_);
        room.offset = place + static_cast<std::int64_t>(room.held);
        room.next = room.bytes;
        if (!read_again(*room.file, place, room.bytes, room.held)) {
            room.file = nullptr;
            left_ = 0;
            return {nullptr, nullptr, 0};
        }
    }
    decode_points(wform_.format, room.next, room.x, room.val, count);
    room.next += needed;
    room.held -= needed;
    left_ -= static_cast<std::int64_t>(count);
    return {room.x, room.val, count};
}

bool points_are_lost(const Wform &wform)
{
    return wform.val == nullptr && wform.in_file != nullptr && wform.in_file->file->fault != 0;
}

PT first_point(const Wform &wform)
{
    BlockWalk walk(wform);
    const PointBlock block = walk.next();
    return block.count != 0 ? PT{*block.x, *block.val} : PT{};
}
