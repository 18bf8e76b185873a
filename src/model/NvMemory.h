// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A handset's NV memory as the model sees it: numbered items of 128 data
// bytes, each read and written whole, each answered with a status. The file
// of the simulated handset is one such memory; a handset on its diagnostic
// serial link is another.
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <map>

namespace tessaly::model {

// The data bytes of one NV item.
using NvData = std::array<uint8_t, 128>;

// Which item: its number and, for an item kept once per NAM or per MIP
// profile, that index. A handset takes the index in the first data byte of
// the request and gives it back in the first byte of the answer.
struct NvAddress {
    uint16_t item = 0;
    int16_t index = -1; // -1: the item is kept once

    bool operator==(const NvAddress&) const = default;
    bool operator<(const NvAddress& other) const
    {
        return item != other.item ? item < other.item : index < other.index;
    }
};

// "NV item 178 (index 1)", as messages name an item.
inline QString Describe(NvAddress address)
{
    return address.index < 0 ? QStringLiteral("NV item %1").arg(address.item)
                             : QStringLiteral("NV item %1 (index %2)").arg(address.item).arg(address.index);
}

// The items that say who the handset is: never written.
inline constexpr uint16_t EsnItem = 0;
inline constexpr uint16_t MeidItem = 1943;

// A handset's answer to a read or a write, with the numbers handsets use.
enum class NvStatus : uint16_t {
    Done = 0,
    Busy = 1,
    BadCommand = 2,
    Full = 3,
    Failed = 4,
    Inactive = 5, // the item was never written
    BadParameter = 6,
    ReadOnly = 7,
    NotValid = 8, // the handset has no such item
    NoMemory = 9,
    NotAllocated = 10,
};
inline constexpr uint16_t LastNvStatus = 10;

// What an NV status means, for the user.
QString NvStatusText(uint16_t status);

// Whether the status says that the handset does not hold the item at all, as
// older handsets lack newer items: its values are left empty and it is never
// written.
inline bool Lacks(NvStatus status)
{
    return status >= NvStatus::Inactive && status <= NvStatus::NotValid;
}

// Items by address, such as the factory values or the values of a read.
using NvImage = std::map<NvAddress, NvData>;

class NvMemory {
public:
    virtual ~NvMemory() = default;

    // Reads an item into `data`. An indexed address carries its index in
    // data[0] both ways.
    virtual NvStatus read(NvAddress address, NvData& data) = 0;
    // Writes an item whole; data[0] of an indexed item is its index.
    virtual NvStatus write(NvAddress address, const NvData& data) = 0;
    // Ends a run of writes: the memory makes them last. A memory that keeps
    // each write as it comes has nothing left to do. Throws TessalyError when
    // the writes cannot be kept.
    virtual void commit() = 0;
    // Ends a read of every item: a memory may keep a copy of what was read.
    virtual void readDone() {}
};

} // namespace tessaly::model
