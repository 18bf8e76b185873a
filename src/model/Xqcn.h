// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// NV items and the handset's file system in an XQCN file, the XML file in
// which the Windows service tools and several open tools keep a handset's NV
// items and EFS files, read and written here as pure functions over the
// file's bytes.
//
// An XQCN file is a tree of <Storage Name=...> elements with <Stream Length=
// Name= Value=> leaves; the numbered items are the stream NV_ITEM_ARRAY in the
// storage NV_NUMBERED_ITEMS, one 136-byte record an item. Files are kept in
// the storages EFS_Backup, NV_Items and Provisioning_Item_Files: a stream of
// the file's path in EFS_Dir, and a stream of the same name with its bytes in
// EFS_Data. XQCN has no place for an item a handset lacks, nor for folders,
// links, or a file's mode and time: those go into streams of halvane's own
// beside them (Halvane_Item_Status, Halvane_EFS_Entries), which other tools
// pass over. The index of an indexed item is its first data byte, as the
// handset itself carries it.
#pragma once

#include "model/NvFile.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QStringList>

#include <set>
#include <vector>

namespace tessaly::model {

// What an XQCN file holds that halvane understands, and what it does not.
struct XqcnContents {
    std::vector<NvEntry> entries;
    std::vector<EfsEntry> files; // a file without a mode in the XQCN file has that of a plain file, 0100644
    // The streams passed over, by their storages below the file's own and
    // their name: "00000000/default/Mobile_Property_Info". An empty stream
    // holds nothing to pass over and is not among them.
    QStringList passedOver;
};

// The bytes of an XQCN file holding `entries` and `files`.
QByteArray WriteXqcn(const std::vector<NvEntry>& entries, const std::vector<EfsEntry>& files = {});

// Reads an XQCN file; `indexed` names the items kept once per NAM or profile.
// Gives why the file is refused, naming what is wrong and where (not
// well-formed XML, no numbered-items stream, a stream whose bytes are not
// hexadecimal or not its stated length, a record of a wrong size, an item
// number out of 0 to 65535, an item listed twice; a file's stream cut short,
// without its path or data stream or naming a path IsEfsPath does not take, a
// path held twice with other bytes, an entry of halvane's own of no kind
// IsEfsKind knows or for a file no stream holds), or an empty string when
// `contents` holds the file. A refused file gives nothing.
QString ReadXqcn(QByteArrayView bytes, const std::set<uint16_t>& indexed, XqcnContents& contents);

} // namespace tessaly::model
