// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// What a handset says of itself: the version reply (0x00), the extended
// build id (0x7C), the diagnostic protocol's version (0x1C) and the station
// status (0x0C). Each layout is encoded here for the emulator and decoded for
// halvane; the version reply is decoded field by field, never as one string.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>

namespace tessaly::link {

// The version reply's fields, in their order on the line; texts are fixed
// width (dates 11 bytes as "Mar 18 2024", times 8 as "14:02:37", the version
// directory 8).
struct VersionInfo {
    QString compileDate;
    QString compileTime;
    QString releaseDate;
    QString releaseTime;
    QString versionDirectory;
    uint8_t stationClassMark = 0;
    uint8_t caiRevision = 0;
    uint8_t modelNumber = 0;
    uint16_t firmwareRevision = 0;
    uint8_t slotCycleIndex = 0;
    uint8_t hardwareMajor = 0;
    uint8_t hardwareMinor = 0;
};

inline constexpr qsizetype VersionReplySize = 55;

QByteArray EncodeVersion(const VersionInfo& version);
VersionInfo ParseVersion(QByteArrayView request, QByteArrayView reply);

// The extended build id: the mobile model id, then two NUL-ended strings,
// the software build and the model's name.
struct ExtendedBuildId {
    uint8_t version = 0;
    uint32_t msmHardwareVersion = 0;
    uint32_t modelId = 0;
    QString software;
    QString model;
};

QByteArray EncodeExtendedBuildId(const ExtendedBuildId& build);
ExtendedBuildId ParseExtendedBuildId(QByteArrayView request, QByteArrayView reply);

QByteArray EncodeDiagVersion(uint16_t version);
uint16_t ParseDiagVersion(QByteArrayView request, QByteArrayView reply);

// The station status: the fields a service tool shows of it. The MIN goes
// out twice, as the analog and the CDMA one, the same for a CDMA handset.
struct StationStatus {
    uint32_t esn = 0;
    uint16_t rfMode = 0;
    uint32_t min1 = 0; // 24 bits
    uint16_t min2 = 0; // 10 bits
    uint16_t cdmaRxState = 0;
    uint16_t entryReason = 0;
    uint16_t channel = 0;
    uint16_t pilotBase = 0;
    uint16_t sid = 0;
    uint16_t nid = 0;
};

inline constexpr qsizetype StatusReplySize = 48;

QByteArray EncodeStatus(const StationStatus& status);
StationStatus ParseStatus(QByteArrayView request, QByteArrayView reply);

// The CDMA receive states of the status reply, as libqcdm names them.
enum CdmaRxState : uint16_t {
    RxEnteringCdma = 0,
    RxSyncChannel = 1,
    RxPagingChannel = 2, // idle
    RxTrafficChannelInit = 3,
    RxTrafficChannel = 4,
};

// The MIN of a ten-digit directory number: MIN2 of its first three digits,
// MIN1 of the seven after them; nothing unless it is ten digits.
struct MobileIdNumber {
    uint32_t min1 = 0;
    uint16_t min2 = 0;
};
std::optional<MobileIdNumber> MinOfNumber(QStringView digits);

} // namespace tessaly::link
