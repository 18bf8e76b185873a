// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "HandsetProfile.h"

#include <functional>

namespace emu {

namespace {

HandsetProfile Current()
{
    HandsetProfile profile;
    profile.version = {QStringLiteral("Mar 18 2024"), QStringLiteral("14:02:37"), QStringLiteral("Mar 20 2024"),
                       QStringLiteral("09:30:00"), QStringLiteral("HV800"), 0xEA, 6, 60, 231, 2, 1, 2};
    profile.build = {1, 0x000B10E1, 60, QStringLiteral("HV800-2.31.07"), QStringLiteral("Halvane SIM-800")};
    // The factory password that handsets ship with and the open tools send.
    profile.password = QStringLiteral("FFFFFFFFFFFFFFFE");
    profile.lastLogItems[1] = 0x5FF;
    profile.sid = 4139;
    profile.nid = 65535;
    profile.channel = 283;
    return profile;
}

// A handset of a few years before: no MEID, no extended build id, no
// subsystem commands; its version reply is all it says of itself.
HandsetProfile Older()
{
    HandsetProfile profile = Current();
    profile.version = {QStringLiteral("Jun 02 2005"), QStringLiteral("11:47:10"), QStringLiteral("Jun 03 2005"),
                       QStringLiteral("16:00:00"), QStringLiteral("HV300"), 0xEA, 4, 30, 112, 2, 0, 9};
    profile.build = {};
    profile.diagVersion = 7;
    profile.hasBuildId = false;
    profile.hasMeid = false;
    profile.hasSubsystems = false;
    profile.lastLogItems[1] = 0x3FF; // fewer 1X codes than a later handset's
    return profile;
}

} // namespace

QStringList ProfileNames()
{
    return {QStringLiteral("SIM-800"), QStringLiteral("SIM-300")};
}

std::optional<HandsetProfile> ProfileByName(const QString& name)
{
    if (name.compare(QLatin1String("SIM-800"), Qt::CaseInsensitive) == 0)
        return Current();
    if (name.compare(QLatin1String("SIM-300"), Qt::CaseInsensitive) == 0)
        return Older();
    return {};
}

HandsetProfile WithFields(HandsetProfile profile, const QJsonObject& fields, QString& problem)
{
    const auto text = [&](const char* key, QString& field) {
        const QJsonValue value = fields[QLatin1String(key)];
        if (value.isString())
            field = value.toString();
        else if (!value.isUndefined())
            problem = QStringLiteral("the handset's \"%1\" is not a text").arg(QLatin1String(key));
    };
    const auto number = [&](const char* key, uint32_t most, const std::function<void(uint32_t)>& set) {
        const QJsonValue value = fields[QLatin1String(key)];
        if (value.isDouble() && value.toDouble() >= 0 && value.toDouble() <= most)
            set(uint32_t(value.toDouble()));
        else if (!value.isUndefined())
            problem = QStringLiteral("the handset's \"%1\" is not a number of 0 to %2").arg(QLatin1String(key)).arg(most);
    };
    const auto flag = [&](const char* key, bool& field) {
        const QJsonValue value = fields[QLatin1String(key)];
        if (value.isBool())
            field = value.toBool();
        else if (!value.isUndefined())
            problem = QStringLiteral("the handset's \"%1\" is not true or false").arg(QLatin1String(key));
    };
    tessaly::link::VersionInfo& version = profile.version;
    text("model", profile.build.model);
    text("software", profile.build.software);
    text("versionDirectory", version.versionDirectory);
    text("compileDate", version.compileDate);
    text("compileTime", version.compileTime);
    text("releaseDate", version.releaseDate);
    text("releaseTime", version.releaseTime);
    text("password", profile.password);
    number("modelNumber", 0xFF, [&](uint32_t v) { version.modelNumber = uint8_t(v); });
    number("modelId", 0xFFFFFFFF, [&](uint32_t v) { profile.build.modelId = v; });
    number("firmwareRevision", 0xFFFF, [&](uint32_t v) { version.firmwareRevision = uint16_t(v); });
    number("hardwareMajor", 0xFF, [&](uint32_t v) { version.hardwareMajor = uint8_t(v); });
    number("hardwareMinor", 0xFF, [&](uint32_t v) { version.hardwareMinor = uint8_t(v); });
    number("subscriptions", 2, [&](uint32_t v) { profile.subscriptions = int(v); });
    flag("extendedBuildId", profile.hasBuildId);
    flag("meid", profile.hasMeid);
    flag("subsystems", profile.hasSubsystems);
    return profile;
}

} // namespace emu
