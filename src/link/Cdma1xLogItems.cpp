// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/Cdma1xLogItems.h"

namespace tessaly::link {

namespace {

// Fields packed most significant bit first, as the air interface sends them.
class BitWriter {
public:
    void put(uint64_t value, int bits)
    {
        for (int bit = bits - 1; bit >= 0; --bit) {
            if (m_used % 8 == 0)
                m_bytes.append('\0');
            if ((value >> bit) & 1)
                m_bytes[m_bytes.size() - 1] = char(uint8_t(m_bytes.back()) | 0x80 >> (m_used % 8));
            ++m_used;
        }
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
    int m_used = 0;
};

class BitReader {
public:
    explicit BitReader(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }
    // The next `bits`; zeros past the end, which fits() then tells.
    uint32_t take(int bits)
    {
        uint32_t value = 0;
        for (int i = 0; i < bits; ++i, ++m_used) {
            const qsizetype byte = m_used / 8;
            const bool set = byte < m_bytes.size() && (uint8_t(m_bytes[byte]) & 0x80 >> (m_used % 8));
            value = value << 1 | (set ? 1 : 0);
        }
        return value;
    }
    bool fits() const { return m_used <= m_bytes.size() * 8; }

private:
    QByteArrayView m_bytes;
    qsizetype m_used = 0;
};

// The item of a message of `type` with `fields` packed after it.
QByteArray ChannelMessage(uint8_t type, const QByteArray& fields)
{
    QByteArray item(1, char(2 + fields.size()));
    item.append(char(type));
    return item + fields;
}

// The packed fields of an item of `type`; nothing for another type or an
// item whose length is wrong.
std::optional<QByteArrayView> FieldsOf(QByteArrayView item, uint8_t type)
{
    if (ChannelMessageType(item) != type)
        return {};
    return item.sliced(2);
}

} // namespace

// The sync channel message (C.S0005, 3.7.2.3.2.26): P_REV, MIN_P_REV (8 bits
// each), SID (15), NID (16), PILOT_PN (9), then LC_STATE (42), SYS_TIME (36),
// LP_SEC (8), LTM_OFF (6), DAYLT (1), PRAT (2) and CDMA_FREQ (11).
QByteArray EncodeSyncChannelMessage(const SyncChannelMessage& message)
{
    BitWriter fields;
    fields.put(message.protocolRevision, 8);
    fields.put(message.leastProtocolRevision, 8);
    fields.put(message.sid, 15);
    fields.put(message.nid, 16);
    fields.put(message.pilotPn, 9);
    for (int bits : {42, 36, 8, 6, 1, 2, 11})
        fields.put(0, bits);
    return ChannelMessage(SyncChannelMessageType, fields.bytes());
}

// The system parameters message (C.S0005, 3.7.2.3.2.1): PILOT_PN (9 bits),
// CONFIG_MSG_SEQ (6), SID (15), NID (16), REG_ZONE (12), TOTAL_ZONES (3),
// ZONE_TIMER (3), MULT_SIDS (1), MULT_NIDS (1), BASE_ID (16); the fields
// after it are not sent here.
QByteArray EncodeSystemParameters(const SystemParameters& message)
{
    BitWriter fields;
    fields.put(message.pilotPn, 9);
    fields.put(message.configSequence, 6);
    fields.put(message.sid, 15);
    fields.put(message.nid, 16);
    fields.put(message.registrationZone, 12);
    fields.put(1, 3); // one zone kept
    fields.put(1, 3); // its timer, the shortest
    fields.put(0, 2);
    fields.put(message.baseId, 16);
    return ChannelMessage(SystemParametersMessageType, fields.bytes());
}

// The general page message (C.S0005, 3.7.2.3.2.17): CONFIG_MSG_SEQ and
// ACC_MSG_SEQ (6 bits each), CLASS_0_DONE, CLASS_1_DONE, TMSI_DONE,
// ORDERED_TMSIS, BROADCAST_DONE (1 each), 4 reserved bits and ADD_LENGTH (3),
// then no page records.
QByteArray EncodeGeneralPage(const GeneralPage& page)
{
    BitWriter fields;
    fields.put(page.configSequence, 6);
    fields.put(page.accessSequence, 6);
    fields.put(0b11101, 5);
    fields.put(0, 4);
    fields.put(0, 3);
    return ChannelMessage(GeneralPageMessageType, fields.bytes());
}

std::optional<uint8_t> ChannelMessageType(QByteArrayView item)
{
    if (item.size() < 2 || uint8_t(item[0]) != item.size())
        return {};
    return uint8_t(item[1]);
}

std::optional<SyncChannelMessage> ReadSyncChannelMessage(QByteArrayView item)
{
    const std::optional<QByteArrayView> fields = FieldsOf(item, SyncChannelMessageType);
    if (!fields)
        return {};
    BitReader reader(*fields);
    SyncChannelMessage message;
    message.protocolRevision = uint8_t(reader.take(8));
    message.leastProtocolRevision = uint8_t(reader.take(8));
    message.sid = uint16_t(reader.take(15));
    message.nid = uint16_t(reader.take(16));
    message.pilotPn = uint16_t(reader.take(9));
    return reader.fits() ? std::optional(message) : std::nullopt;
}

std::optional<SystemParameters> ReadSystemParameters(QByteArrayView item)
{
    const std::optional<QByteArrayView> fields = FieldsOf(item, SystemParametersMessageType);
    if (!fields)
        return {};
    BitReader reader(*fields);
    SystemParameters message;
    message.pilotPn = uint16_t(reader.take(9));
    message.configSequence = uint8_t(reader.take(6));
    message.sid = uint16_t(reader.take(15));
    message.nid = uint16_t(reader.take(16));
    message.registrationZone = uint16_t(reader.take(12));
    reader.take(8);
    message.baseId = uint16_t(reader.take(16));
    return reader.fits() ? std::optional(message) : std::nullopt;
}

} // namespace tessaly::link
