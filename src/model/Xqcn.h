// NV items in an XQCN file, the XML file in which the Windows service tools
// and several open tools keep a handset's NV items, read and written here as
// pure functions over the file's bytes.
//
// An XQCN file is a tree of <Storage Name=...> elements with <Stream Length=
// Name= Value=> leaves; the numbered items are the stream NV_ITEM_ARRAY in the
// storage NV_NUMBERED_ITEMS, one 136-byte record an item. XQCN has no place
// for an item a handset lacks: such items, with their status, go into a
// stream of halvane's own beside it (Halvane_Item_Status), which other tools
// pass over. The index of an indexed item is its first data byte, as the
// handset itself carries it.
#pragma once

#include "model/NvFile.h"

#include <QByteArray>
#include <QByteArrayView>

#include <set>
#include <vector>

namespace tessaly::model {

// The bytes of an XQCN file holding `entries`.
QByteArray WriteXqcn(const std::vector<NvEntry>& entries);

// Reads the entries of an XQCN file; `indexed` names the items kept once per
// NAM or profile. Gives why the file is refused, naming what is wrong and
// where (not well-formed XML, no numbered-items stream, a stream whose bytes
// are not hexadecimal or not its stated length, a record of a wrong size, an
// item number out of 0 to 65535, an item listed twice), or an empty string
// when `entries` holds the file's items. A refused file gives no entries.
QString ReadXqcn(QByteArrayView bytes, const std::set<uint16_t>& indexed, std::vector<NvEntry>& entries);

} // namespace tessaly::model
