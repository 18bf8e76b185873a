// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "BenchHandset.h"

#include <QFileInfo>

namespace emu {

using namespace tessaly;

namespace {

// The serial number is the low 24 bits of both: of an ESN after its 8-bit
// maker's code, and of a MEID after its 8-bit region and 24-bit maker's
// code (the layout of 3GPP2 S.R0048). The items keep them little-endian.
void MoveSerial(model::NvData& data, int handset)
{
    const uint32_t serial = uint32_t(data[0]) | uint32_t(data[1]) << 8 | uint32_t(data[2]) << 16;
    const uint32_t moved = (serial + uint32_t(handset)) & 0xFFFFFF;
    data[0] = uint8_t(moved);
    data[1] = uint8_t(moved >> 8);
    data[2] = uint8_t(moved >> 16);
}

} // namespace

QString BenchStatePath(const QString& state, int handset)
{
    const QFileInfo file(state);
    const QString number = QStringLiteral("-%1").arg(handset);
    const QString name = file.fileName();
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    // A leading dot starts a hidden name, not an extension.
    const QString numbered = dot > 0 ? name.left(dot) + number + name.mid(dot) : name + number;
    return state.left(state.size() - name.size()) + numbered;
}

model::NvImage BenchFactory(model::NvImage factory, int handset)
{
    for (const uint16_t item : {model::EsnItem, model::MeidItem})
        if (const auto found = factory.find({item, -1}); found != factory.end())
            MoveSerial(found->second, handset);
    return factory;
}

} // namespace emu
