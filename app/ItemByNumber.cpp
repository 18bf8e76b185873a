// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "ItemByNumber.h"

#include "HexDump.h"

#include "link/Backup.h"
#include "link/LiveNvMemory.h"
#include "link/Restore.h"
#include "model/ItemValues.h"

#include <tessaly/TessalyError.h>

#include <QRegularExpression>

#include <cstdio>
#include <functional>

namespace halvane {

using namespace tessaly;
using model::NvAddress;
using model::NvStatus;

namespace {

void Refuse(const QString& why)
{
    std::fprintf(stderr, "halvane: %s\n", qPrintable(why));
}

// The indexes the catalogue names for `item`, lowest and highest; none for
// an item it keeps once or does not know.
std::optional<std::pair<int, int>> CatalogueIndexes(uint16_t item)
{
    std::optional<std::pair<int, int>> range;
    for (const NvAddress& address : model::Catalogue::BuiltIn().addresses()) {
        if (address.item != item || address.index < 0)
            continue;
        range = range ? std::pair(std::min(range->first, int(address.index)), std::max(range->second, int(address.index)))
                      : std::pair(int(address.index), int(address.index));
    }
    return range;
}

// "ITEM" or "ITEM:INDEX", in decimal. The handset takes an index only in the
// items it keeps per NAM or profile, and needs it there: the catalogue says
// which they are, as it does for the full backup and for XQCN files.
std::optional<NvAddress> ParseAddress(const QString& option, const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})(?::(\\d{1,3}))?$"));
    const QRegularExpressionMatch match = form.match(text);
    const uint item = match.captured(1).toUInt();
    const bool indexGiven = match.hasCaptured(2);
    const uint index = match.captured(2).toUInt();
    if (!match.hasMatch() || item > 65535 || index > 255) {
        Refuse(QStringLiteral("--%1 wants ITEM or ITEM:INDEX, an item number of 0 to 65535 and an index of 0 to 255, "
                              "not \"%2\"")
                   .arg(option, text));
        return {};
    }
    const auto indexes = CatalogueIndexes(uint16_t(item));
    if (indexes && !indexGiven) {
        Refuse(QStringLiteral("NV item %1 is kept once per NAM or MIP profile: give its index, as %1:%2 (the catalogue "
                              "names %2 to %3)")
                   .arg(item)
                   .arg(indexes->first)
                   .arg(indexes->second));
        return {};
    }
    if (!indexes && indexGiven) {
        Refuse(QStringLiteral("NV item %1 takes no index: only the items the catalogue keeps per NAM or MIP profile "
                              "do; give it as %1")
                   .arg(item));
        return {};
    }
    return NvAddress{uint16_t(item), indexGiven ? int16_t(index) : int16_t(-1)};
}

// Hexadecimal digits, two a byte, with spaces anywhere between the bytes.
std::optional<QByteArray> ParseBytes(const QString& text)
{
    QString digits = text;
    digits.remove(QRegularExpression(QStringLiteral("\\s")));
    static const QRegularExpression hex(QStringLiteral("^[0-9A-Fa-f]*$"));
    if (digits.isEmpty()) {
        Refuse(QStringLiteral("--nv-write wants the item's bytes in hexadecimal after the item, as 00 38 35"));
        return {};
    }
    if (!hex.match(digits).hasMatch()) {
        Refuse(QStringLiteral("\"%1\" is not hexadecimal: the bytes are written as 00 38 35 or 003835").arg(text));
        return {};
    }
    if (digits.size() % 2) {
        Refuse(QStringLiteral("\"%1\" has %2 hexadecimal digits: each byte takes two").arg(text).arg(digits.size()));
        return {};
    }
    const QByteArray bytes = QByteArray::fromHex(digits.toLatin1());
    if (bytes.size() > qsizetype(model::NvData().size())) {
        Refuse(QStringLiteral("%1 bytes were given: an NV item holds 128 at most").arg(bytes.size()));
        return {};
    }
    return bytes;
}

QByteArray Bytes(const model::NvData& data)
{
    return QByteArray(reinterpret_cast<const char*>(data.data()), qsizetype(data.size()));
}

void PrintDump(const model::NvData& data)
{
    const QByteArray bytes = Bytes(data);
    for (qsizetype offset = 0; offset < bytes.size(); offset += HexRowBytes)
        std::printf("%s\n", qPrintable(HexRow(bytes, offset)));
}

// "NV item 178 (index 0), "MDN" on the page System NAM1": the item and where
// the panel shows it.
QString Named(NvAddress address)
{
    const QString place = model::Catalogue::BuiltIn().placeOf(address);
    return place.isEmpty() ? model::Describe(address) : model::Describe(address) + QStringLiteral(", ") + place;
}

// Runs `work` on the live NV memory of the handset on the options' port, the
// SPC the one given with --spc or none, telling a failure of the link.
int WithMemory(const Options& options, const std::function<int(link::LiveNvMemory&)>& work)
{
    try {
        link::SerialLink line(options.port, options.replyTime);
        const QString spc = options.spc;
        link::LiveNvMemory memory(line, [spc] { return spc; });
        return work(memory);
    } catch (const TessalyError& error) {
        Refuse(error.description());
        return 1;
    }
}

} // namespace

std::optional<ItemWork> CheckItemWork(const Options& options)
{
    const bool write = !options.nvWrite.isEmpty();
    const std::optional<NvAddress> address = ParseAddress(write ? QStringLiteral("nv-write") : QStringLiteral("nv-read"),
                                                          write ? options.nvWrite : options.nvRead);
    if (!address)
        return {};
    ItemWork work{*address};
    if (!write)
        return work;
    if (const QString protection = model::Catalogue::BuiltIn().protection(address->item); !protection.isEmpty()) {
        Refuse(QStringLiteral("%1 is never written: the catalogue keeps it as %2").arg(Named(*address), protection));
        return {};
    }
    const std::optional<QByteArray> bytes = ParseBytes(options.nvBytes);
    if (!bytes)
        return {};
    // The handset finds an indexed item by its first byte: another there
    // would be a write to another NAM or profile.
    if (address->index >= 0 && uint8_t(bytes->at(0)) != address->index) {
        Refuse(QStringLiteral("the first byte of an indexed item is its index: %1 for %2, not %3")
                   .arg(uint(address->index), 2, 16, QLatin1Char('0'))
                   .arg(options.nvWrite)
                   .arg(uint(uint8_t(bytes->at(0))), 2, 16, QLatin1Char('0')));
        return {};
    }
    std::copy(bytes->begin(), bytes->end(), work.data.begin());
    work.given = bytes->size();
    return work;
}

int ReadItemByNumber(const Options& options, const ItemWork& work)
{
    return WithMemory(options, [&](link::LiveNvMemory& memory) {
        const link::NvItemReply reply = memory.readAnswer(work.address);
        std::printf("%s: %s\n", qPrintable(Named(work.address)), qPrintable(model::NvStatusText(reply.status)));
        // Held: done, or read-only with its value. Any other answer carries
        // no value of the item.
        if (reply.status != uint16_t(NvStatus::Done) && reply.status != uint16_t(NvStatus::ReadOnly))
            return 1;
        PrintDump(reply.data);
        const auto values = model::ItemValues(model::Catalogue::BuiltIn(), work.address, reply.data);
        if (values.empty())
            std::printf("The catalogue does not know %s: its bytes alone are shown.\n",
                        qPrintable(model::Describe(work.address)));
        for (const model::ItemValue& value : values)
            std::printf("%s: %s\n", qPrintable(value.title), qPrintable(value.values.join(QStringLiteral(", "))));
        return 0;
    });
}

int WriteItemByNumber(const Options& options, const ItemWork& work)
{
    return WithMemory(options, [&](link::LiveNvMemory& memory) {
        const QString name = Named(work.address);
        model::NvData before{};
        const NvStatus status = memory.read(work.address, before);
        if (const QString refusal = link::HandsetRefusal(status); !refusal.isEmpty()) {
            std::printf("%s: not written (%s)\n", qPrintable(name), qPrintable(refusal));
            return 1;
        }
        if (status == NvStatus::Done && before == work.data) {
            std::printf("%s: unchanged: the handset holds these bytes already\n", qPrintable(name));
            return 0;
        }
        // What the handset held is kept before a byte is written, under its
        // ESN and MEID, as every read of the handset is.
        model::NvData identity{};
        memory.read({model::EsnItem, -1}, identity);
        memory.read({model::MeidItem, -1}, identity);
        memory.setBackupFolder(link::BackupFolder());
        memory.readDone();
        std::printf("What the handset held is kept in %s\n", qPrintable(memory.lastBackup()));
        std::fflush(stdout);
        const NvStatus written = memory.write(work.address, work.data);
        if (written != NvStatus::Done) {
            std::printf("%s: refused (%s)\n", qPrintable(name), qPrintable(model::NvStatusText(uint16_t(written))));
            return 1;
        }
        const qsizetype size = qsizetype(work.data.size());
        std::printf("%s: written and read back the same%s\n", qPrintable(name),
                    qPrintable(work.given < size ? QStringLiteral(" (%1 bytes given, zeros after them)").arg(work.given)
                                                 : QString()));
        const auto was = model::ItemValues(model::Catalogue::BuiltIn(), work.address, before);
        const auto now = model::ItemValues(model::Catalogue::BuiltIn(), work.address, work.data);
        for (size_t i = 0; i < now.size(); ++i)
            for (qsizetype column = 0; column < now[i].values.size(); ++column)
                if (status != NvStatus::Done || was[i].values[column] != now[i].values[column])
                    std::printf("%s: %s -> %s\n", qPrintable(model::ColumnName(now[i], column)),
                                qPrintable(status == NvStatus::Done ? was[i].values[column] : QStringLiteral("(none)")),
                                qPrintable(now[i].values[column]));
        return 0;
    });
}

} // namespace halvane
