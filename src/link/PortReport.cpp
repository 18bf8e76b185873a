// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/PortReport.h"

#include "link/IdentityText.h"

#include <QJsonObject>
#include <QStringList>

namespace tessaly::link {

namespace {

QString Hex4(uint16_t value)
{
    return QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0'));
}

QString HoldersText(const std::vector<PortHolder>& holders)
{
    QStringList names;
    for (const PortHolder& holder : holders)
        names << QStringLiteral("%1 (pid %2)").arg(holder.program.isEmpty() ? QStringLiteral("a program") : holder.program)
                     .arg(holder.pid);
    return QStringLiteral("held by ") + names.join(QStringLiteral(", "));
}

} // namespace

QString WhyNotProbed(const SerialPortEntry& port)
{
    if (!port.nodeExists)
        return QStringLiteral("no device node");
    if (!port.holders.empty())
        return HoldersText(port.holders);
    if (!port.permitted)
        return QStringLiteral("not permitted (group %1)").arg(port.group);
    return {};
}

QString PortLine(const ListedPort& listed)
{
    const SerialPortEntry& port = listed.port;
    QStringList parts{port.device};
    if (port.usb) {
        const UsbInterfaceInfo& usb = *port.usb;
        QString what = Hex4(usb.vendorId) + QLatin1Char(':') + Hex4(usb.productId);
        const QString names = QStringList{usb.manufacturer, usb.product}.join(QLatin1Char(' ')).trimmed();
        if (!names.isEmpty())
            what += QStringLiteral(" \"%1\"").arg(names);
        if (usb.interfaceNumber >= 0)
            what += QStringLiteral(" interface %1 class %2").arg(usb.interfaceNumber).arg(usb.interfaceClass, 2, 16,
                                                                                           QLatin1Char('0'));
        parts << what;
        if (usb.diagnostic)
            parts << QStringLiteral("handset diagnostic port");
    } else if (port.emulated) {
        parts << QStringLiteral("emulated handset (tessaly-emu, pid %1, ESN %2)")
                     .arg(port.emulated->pid)
                     .arg(port.emulated->esn);
    } else if (!port.driver.isEmpty()) {
        parts << port.driver;
    }
    if (!port.holders.empty())
        parts << HoldersText(port.holders);
    if (port.nodeExists)
        parts << (port.permitted ? QStringLiteral("permitted")
                                 : QStringLiteral("not permitted (group %1, mode %2)")
                                       .arg(port.group)
                                       .arg(port.mode, 4, 8, QLatin1Char('0')));
    else
        parts << QStringLiteral("no device node");
    if (listed.probe) {
        if (const auto& handset = listed.probe->handset) {
            QString found = QStringLiteral("answers: %1").arg(handset->model);
            if (!handset->softwareVersion.isEmpty())
                found += QStringLiteral(", software %1").arg(handset->softwareVersion);
            if (const auto& esn = listed.probe->esn)
                found += QStringLiteral(", ESN %1").arg(EsnHex(*esn));
            parts << found;
        } else {
            parts << listed.probe->failure;
        }
    }
    return parts.join(QStringLiteral("  "));
}

QJsonArray PortsJson(const std::vector<ListedPort>& ports)
{
    QJsonArray array;
    for (const ListedPort& listed : ports) {
        const SerialPortEntry& port = listed.port;
        QJsonObject object{{QStringLiteral("device"), port.device}, {QStringLiteral("driver"), port.driver}};
        if (port.usb) {
            const UsbInterfaceInfo& usb = *port.usb;
            object[QStringLiteral("usb")] = QJsonObject{
                {QStringLiteral("vendorId"), Hex4(usb.vendorId)},
                {QStringLiteral("productId"), Hex4(usb.productId)},
                {QStringLiteral("manufacturer"), usb.manufacturer},
                {QStringLiteral("product"), usb.product},
                {QStringLiteral("interfaceNumber"), usb.interfaceNumber},
                {QStringLiteral("interfaceClass"), usb.interfaceClass},
                {QStringLiteral("handsetDiagnosticPort"), usb.diagnostic != nullptr},
            };
        } else {
            object[QStringLiteral("usb")] = QJsonValue::Null;
        }
        if (const auto& emulated = port.emulated) {
            QJsonObject emulator{{QStringLiteral("pid"), emulated->pid},
                                {QStringLiteral("handset"), emulated->handset},
                                {QStringLiteral("model"), emulated->model},
                                {QStringLiteral("esn"), emulated->esn},
                                {QStringLiteral("meid"), emulated->meid.isEmpty() ? QJsonValue::Null
                                                                                  : QJsonValue(emulated->meid)}};
            object[QStringLiteral("emulated")] = emulator;
        } else {
            object[QStringLiteral("emulated")] = QJsonValue::Null;
        }
        QJsonArray holders;
        for (const PortHolder& holder : port.holders)
            holders.append(QJsonObject{{QStringLiteral("pid"), holder.pid}, {QStringLiteral("program"), holder.program}});
        object[QStringLiteral("heldBy")] = holders;
        object[QStringLiteral("deviceNode")] = port.nodeExists;
        if (port.nodeExists) {
            object[QStringLiteral("ownerUid")] = qint64(port.ownerUid);
            object[QStringLiteral("group")] = port.group;
            object[QStringLiteral("mode")] = QStringLiteral("%1").arg(port.mode, 4, 8, QLatin1Char('0'));
        }
        object[QStringLiteral("permitted")] = port.permitted;
        if (listed.probe) {
            QJsonObject probe{{QStringLiteral("answered"), listed.probe->handset.has_value()}};
            if (const auto& handset = listed.probe->handset) {
                probe[QStringLiteral("model")] = handset->model;
                probe[QStringLiteral("softwareVersion")] = handset->softwareVersion;
                probe[QStringLiteral("esn")] = listed.probe->esn ? QJsonValue(EsnHex(*listed.probe->esn)) : QJsonValue::Null;
            } else {
                probe[QStringLiteral("failure")] = listed.probe->failure;
            }
            object[QStringLiteral("probe")] = probe;
        } else {
            object[QStringLiteral("probe")] = QJsonValue::Null;
        }
        array.append(object);
    }
    return array;
}

} // namespace tessaly::link
