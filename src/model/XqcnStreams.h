// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The parts an XQCN file is made of, for model/Xqcn.cpp: <Storage Name=...>
// elements and <Stream Length= Name= Value=> leaves whose Value is the
// stream's bytes in hexadecimal, two digits a byte, separated by spaces; and
// the little-endian numbers and NUL-ended texts inside the streams.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cstdint>
#include <optional>

namespace tessaly::model {

void Put16(QByteArray& bytes, uint16_t value);
void Put32(QByteArray& bytes, uint32_t value);
// The number of `size` bytes at `at`, which the caller has checked.
uint32_t Get(QByteArrayView bytes, qsizetype at, int size);
// The text from `at` to the NUL that ends it, a character a byte as the
// handset's paths are; nothing when no NUL ends it.
std::optional<QString> Text(QByteArrayView bytes, qsizetype at);

void StartStorage(QXmlStreamWriter& xml, const QString& name);
void WriteStream(QXmlStreamWriter& xml, const QString& name, const QByteArray& bytes);
// The bytes of the stream `xml` stands on, from its Value and Length, or why
// they cannot be taken, naming the stream as `where`.
QString StreamBytes(const QXmlStreamReader& xml, const QString& where, QByteArray& bytes);

} // namespace tessaly::model
