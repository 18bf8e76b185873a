// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/BackupDiff.h"

#include "model/ItemValues.h"

#include <set>

namespace tessaly::link {

using model::NvAddress;
using model::NvEntry;
using model::NvStatus;

namespace {

// Whether the handset held the item: its bytes are its value.
bool Held(const NvEntry& entry)
{
    return entry.status == NvStatus::Done || entry.status == NvStatus::ReadOnly;
}

// Whether the entry says the handset has no value there, as a full backup
// says by leaving the item out.
bool Lacking(const NvEntry& entry)
{
    return entry.status == NvStatus::Inactive || entry.status == NvStatus::BadParameter;
}

// The catalogue's values of a held entry, by name; none for an entry that is
// not there or not held.
std::vector<std::pair<QString, QString>> NamedValues(const std::optional<NvEntry>& entry)
{
    std::vector<std::pair<QString, QString>> named;
    if (!entry || !Held(*entry))
        return named;
    for (const model::ItemValue& value : model::ItemValues(model::Catalogue::BuiltIn(), entry->address, entry->data))
        for (qsizetype column = 0; column < value.values.size(); ++column)
            named.emplace_back(model::ColumnName(value, column), value.values[column]);
    return named;
}

// The values whose text differs between the two sides. Both sides name the
// same values, those of the address, when both are held.
std::vector<ValueChange> ValueChanges(const std::optional<NvEntry>& before, const std::optional<NvEntry>& after)
{
    const auto was = NamedValues(before);
    const auto now = NamedValues(after);
    std::vector<ValueChange> changes;
    for (size_t i = 0; i < std::max(was.size(), now.size()); ++i) {
        const QString name = i < was.size() ? was[i].first : now[i].first;
        const auto from = i < was.size() ? std::optional(was[i].second) : std::nullopt;
        const auto to = i < now.size() ? std::optional(now[i].second) : std::nullopt;
        if (from != to || was.empty() || now.empty())
            changes.push_back({name, from, to});
    }
    return changes;
}

std::map<NvAddress, NvEntry> ByAddress(const std::vector<NvEntry>& entries)
{
    std::map<NvAddress, NvEntry> map;
    for (const NvEntry& entry : entries)
        map.emplace(entry.address, entry);
    return map;
}

std::map<QString, model::EfsEntry> ByPath(const std::vector<model::EfsEntry>& entries)
{
    std::map<QString, model::EfsEntry> map;
    for (const model::EfsEntry& entry : entries)
        map.emplace(entry.path, entry);
    return map;
}

void CompareItems(const Backup& before, const Backup& after, BackupDifference& difference)
{
    const std::map<NvAddress, NvEntry> was = ByAddress(before.items);
    const std::map<NvAddress, NvEntry> now = ByAddress(after.items);
    const std::vector<NvAddress>& listed = model::Catalogue::BuiltIn().addresses();
    const std::set<NvAddress> catalogue(listed.begin(), listed.end());
    difference.catalogueItemsAlone = before.full != after.full;
    std::set<NvAddress> addresses;
    for (const auto* side : {&was, &now})
        for (const auto& [address, entry] : *side)
            if (!difference.catalogueItemsAlone || catalogue.count(address))
                addresses.insert(address);
    difference.itemsCompared = addresses.size();
    for (const NvAddress& address : addresses) {
        const auto from = was.find(address);
        const auto to = now.find(address);
        std::optional<NvEntry> one = from == was.end() ? std::nullopt : std::optional(from->second);
        std::optional<NvEntry> other = to == now.end() ? std::nullopt : std::optional(to->second);
        Change change = Change::Differs;
        if (!one || !other) {
            if (Lacking(one ? *one : *other))
                continue;
            change = one ? Change::Gone : Change::Added;
        } else if (one->status == other->status && (!Held(*one) || one->data == other->data)) {
            continue;
        }
        difference.items.push_back({change, address, one, other, ValueChanges(one, other)});
    }
}

// The bytes of two files that differ, over the length both have.
void CompareBytes(const QByteArray& one, const QByteArray& other, FileDifference& difference)
{
    for (qsizetype i = 0; i < std::min(one.size(), other.size()); ++i) {
        if (one[i] == other[i])
            continue;
        if (difference.firstDifference < 0)
            difference.firstDifference = i;
        ++difference.differingBytes;
    }
}

void CompareFiles(const Backup& before, const Backup& after, BackupDifference& difference)
{
    difference.filesCompared = before.files.empty() == after.files.empty();
    if (!difference.filesCompared)
        return;
    const std::map<QString, model::EfsEntry> was = ByPath(before.files);
    const std::map<QString, model::EfsEntry> now = ByPath(after.files);
    std::set<QString> paths;
    for (const auto* side : {&was, &now})
        for (const auto& [path, entry] : *side)
            paths.insert(path);
    difference.filesComparedCount = paths.size();
    for (const QString& path : paths) {
        const auto from = was.find(path);
        const auto to = now.find(path);
        FileDifference file;
        file.path = path;
        if (from != was.end())
            file.before = from->second;
        if (to != now.end())
            file.after = to->second;
        if (!file.before || !file.after) {
            file.change = file.before ? Change::Gone : Change::Added;
        } else {
            CompareBytes(file.before->data, file.after->data, file);
            if (file.before->mode == file.after->mode && file.before->target == file.after->target
                && file.before->data == file.after->data)
                continue;
        }
        difference.files.push_back(std::move(file));
    }
}

} // namespace

BackupDifference CompareBackups(const Backup& before, const Backup& after)
{
    BackupDifference difference;
    difference.otherHandsets = before.esn != after.esn || before.meid != after.meid;
    CompareItems(before, after, difference);
    CompareFiles(before, after, difference);
    return difference;
}

} // namespace tessaly::link
