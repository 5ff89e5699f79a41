// SPDX-License-Identifier: MIT
#include "read/point_blocks.h"

#include "read/binary_points.h"
#include "support/file_bytes.h"
#include "support/memory.h"

#include <utility>

// Fetched in large pieces, handed out in blocks whose columns stay in the nearest cache.
struct BlockWalk::Room {
    static constexpr std::size_t kBytes = std::size_t{1} << 20;
    static constexpr std::size_t kPoints = 50 * kGroupPoints;

    alignas(16) double x[kPoints];
    alignas(16) double val[kPoints];
    char bytes[kBytes];
    const char *next;    // first byte that was not decoded yet
    std::size_t held;    // bytes from there on
    std::int64_t offset; // in the file, of the byte behind them
    Room *free;
};

namespace
{

BlockWalk::Room *free_rooms = nullptr; // of walks that have ended

BlockWalk::Room *take_room()
{
    if (free_rooms == nullptr) {
        return static_cast<BlockWalk::Room *>(f_realloc_large(nullptr, sizeof(BlockWalk::Room)));
    }
    return std::exchange(free_rooms, free_rooms->free);
}

} // namespace

BlockWalk::BlockWalk(const Wform &wform) : wform_(wform), room_(nullptr), left_(0)
{
    if (wform.val != nullptr) {
        left_ = wform.count;
    } else if (wform.in_file != nullptr) {
        left_ = wform.count;
        room_ = take_room();
        room_->held = 0;
        room_->next = room_->bytes;
        room_->offset = wform.in_file->offset;
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
    const auto count = static_cast<std::size_t>(std::min<std::int64_t>(left_, Room::kPoints));
    const std::size_t needed = binary_length(wform_.format, count);
    if (room_->held < needed) {
        const std::size_t block = binary_length(wform_.format, Room::kPoints);
        const std::size_t blocks = Room::kBytes / block;
        const auto points = static_cast<std::size_t>(
            std::min<std::int64_t>(left_, static_cast<std::int64_t>(blocks * Room::kPoints)));
        room_->held = binary_length(wform_.format, points);
        if (!read_again(*wform_.in_file->file, room_->offset, room_->bytes, room_->held)) {
            left_ = 0;
            room_->held = 0;
            return {nullptr, nullptr, 0};
        }
        room_->offset += static_cast<std::int64_t>(room_->held);
        room_->next = room_->bytes;
    }
    decode_points(wform_.format, room_->next, room_->x, room_->val, count);
    room_->next += needed;
    room_->held -= needed;
    left_ -= static_cast<std::int64_t>(count);
    return {room_->x, room_->val, count};
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
