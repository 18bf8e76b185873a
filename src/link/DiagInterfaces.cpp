// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagInterfaces.h"

#include "link/DiagInterfacesText.h" // generated from DiagInterfaces.txt

#include <QRegularExpression>

#include <stdexcept>

namespace tessaly::link {

std::vector<DiagInterface> ParseDiagInterfaces(QStringView text)
{
    static const QRegularExpression entry(
        QStringLiteral("^([0-9a-fA-F]{4})\\s+([0-9a-fA-F]{4})\\s+([0-9a-fA-F]{2})\\s+(\\S.*)$"));
    std::vector<DiagInterface> interfaces;
    for (QStringView line : text.split(u'\n')) {
        line = line.left(line.indexOf(u'#')).trimmed();
        if (line.isEmpty())
            continue;
        const QRegularExpressionMatch match = entry.match(line.toString());
        if (!match.hasMatch())
            throw std::invalid_argument("not a diagnostic interface entry: " + line.toString().toStdString());
        interfaces.push_back({uint16_t(match.capturedView(1).toUInt(nullptr, 16)),
                              uint16_t(match.capturedView(2).toUInt(nullptr, 16)),
                              match.capturedView(3).toInt(nullptr, 16), match.captured(4)});
    }
    return interfaces;
}

const std::vector<DiagInterface>& KnownDiagInterfaces()
{
    static const std::vector<DiagInterface> known = ParseDiagInterfaces(QString::fromUtf8(DiagInterfacesText));
    return known;
}

const DiagInterface* FindDiagInterface(const std::vector<DiagInterface>& known, uint16_t vendorId,
                                       uint16_t productId, int interfaceNumber)
{
    for (const DiagInterface& interface : known)
        if (interface.vendorId == vendorId && interface.productId == productId
            && interface.interfaceNumber == interfaceNumber)
            return &interface;
    return nullptr;
}

} // namespace tessaly::link
