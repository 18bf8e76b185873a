// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/FieldCoding.h"

#include <algorithm>
#include <limits>

namespace tessaly::model {

namespace {

bool IsDecimal(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool IsHexadecimal(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    });
}

// The greatest number that `width` bytes hold.
uint64_t Largest(int width)
{
    return width >= 8 ? std::numeric_limits<uint64_t>::max() : (uint64_t(1) << (8 * width)) - 1;
}

uint64_t ReadNumber(const NvData& data, int offset, int width)
{
    uint64_t value = 0;
    for (int i = width - 1; i >= 0; --i)
        value = value << 8 | data[size_t(offset + i)];
    return value;
}

void WriteNumber(NvData& data, int offset, int width, uint64_t value)
{
    for (int i = 0; i < width; ++i, value >>= 8)
        data[size_t(offset + i)] = uint8_t(value & 0xFF);
}

// The characters from `offset` up to the first zero byte or `length`.
QString ReadLatin1(const NvData& data, int offset, int length)
{
    int end = offset;
    while (end < offset + length && data[size_t(end)] != 0)
        ++end;
    return QString::fromLatin1(reinterpret_cast<const char*>(data.data()) + offset, end - offset);
}

void WriteLatin1(NvData& data, int offset, int length, const QString& text)
{
    const QByteArray bytes = text.toLatin1();
    for (int i = 0; i < length; ++i)
        data[size_t(offset + i)] = i < bytes.size() ? uint8_t(bytes[i]) : 0;
}

// Why `text` cannot be kept in `length` Latin-1 bytes, or an empty string.
QString TextProblem(const QString& text, int length)
{
    if (text.size() > length)
        return QStringLiteral("is longer than %1 characters").arg(length);
    for (QChar c : text)
        if (c.unicode() < 0x20 || c.unicode() > 0xFF || c.unicode() == 0x7F)
            return QStringLiteral("has characters that the handset cannot keep");
    return {};
}

// The number in `text`, or why it is none or too large for `width` bytes.
std::optional<uint64_t> ParseNumber(const QString& text, int width, QString& problem)
{
    if (text.isEmpty() || !IsDecimal(text)) {
        problem = QStringLiteral("is not a whole number");
        return std::nullopt;
    }
    bool ok = false;
    const uint64_t value = text.toULongLong(&ok);
    if (!ok || value > Largest(width)) {
        problem = QStringLiteral("is larger than %1").arg(Largest(width));
        return std::nullopt;
    }
    return value;
}

std::optional<std::array<uint8_t, 4>> ParseAddress(const QString& text)
{
    const QStringList parts = text.split(u'.');
    if (parts.size() != 4)
        return std::nullopt;
    std::array<uint8_t, 4> bytes{};
    for (size_t i = 0; i < 4; ++i) {
        const QString& part = parts[qsizetype(i)];
        if (part.isEmpty() || part.size() > 3 || !IsDecimal(part) || part.toInt() > 255)
            return std::nullopt;
        bytes[i] = uint8_t(part.toInt());
    }
    return bytes;
}

} // namespace

std::optional<Encoding> EncodingNamed(const QString& name)
{
    static const std::pair<const char*, Encoding> names[] = {
        {"digits", Encoding::Digits},
        {"number", Encoding::Number},
        {"hex", Encoding::Hex},
        {"text", Encoding::Text},
        {"counted-text", Encoding::CountedText},
        {"choice", Encoding::Choice},
        {"address", Encoding::Address},
    };
    for (const auto& [text, encoding] : names)
        if (name == QLatin1String(text))
            return encoding;
    return std::nullopt;
}

QString LayoutProblem(const Field& field)
{
    const bool numeric
        = field.encoding == Encoding::Number || field.encoding == Encoding::Hex || field.encoding == Encoding::Choice;
    if (numeric && (field.width < 1 || field.width > 8))
        return QStringLiteral("a number takes 1 to 8 bytes");
    if (field.encoding == Encoding::Address && field.width != 4)
        return QStringLiteral("an address takes 4 bytes");
    if (field.encoding == Encoding::CountedText && field.width < 2)
        return QStringLiteral("a counted text takes its length byte and at least one character");
    if (field.width < 1 || field.offset < (field.indexed ? 1 : 0) || field.offset + field.width > int(NvData().size()))
        return QStringLiteral("the field does not fit in the item's data after its index");
    if (field.encoding == Encoding::Choice && field.choices.isEmpty())
        return QStringLiteral("a choice needs its list");
    return {};
}

int MaxLength(const Field& field)
{
    switch (field.encoding) {
    case Encoding::Digits:
    case Encoding::Text:
        return field.width;
    case Encoding::CountedText:
        return field.width - 1;
    case Encoding::Number:
        return int(QString::number(Largest(field.width)).size());
    case Encoding::Hex:
        return 2 * field.width;
    case Encoding::Address:
        return 15;
    case Encoding::Choice:
        break;
    }
    return 0;
}

bool TakesDigitsOnly(const Field& field)
{
    return field.encoding == Encoding::Digits || field.encoding == Encoding::Number;
}

QString Decode(const Field& field, const NvData& data)
{
    switch (field.encoding) {
    case Encoding::Digits:
    case Encoding::Text:
        return ReadLatin1(data, field.offset, field.width);
    case Encoding::CountedText:
        return ReadLatin1(data, field.offset + 1, std::min<int>(data[size_t(field.offset)], field.width - 1));
    case Encoding::Number:
        return QString::number(ReadNumber(data, field.offset, field.width));
    case Encoding::Hex:
        return QString::number(ReadNumber(data, field.offset, field.width), 16)
            .toUpper()
            .rightJustified(2 * field.width, u'0');
    case Encoding::Choice: {
        // A value outside the list shows as its number, and is kept so.
        const uint64_t value = ReadNumber(data, field.offset, field.width);
        return value < uint64_t(field.choices.size()) ? field.choices[qsizetype(value)] : QString::number(value);
    }
    case Encoding::Address: {
        const auto* bytes = data.data() + field.offset;
        return QStringLiteral("%1.%2.%3.%4").arg(bytes[0]).arg(bytes[1]).arg(bytes[2]).arg(bytes[3]);
    }
    }
    return {};
}

QString Encode(const Field& field, const QString& text, NvData& data)
{
    QString problem;
    switch (field.encoding) {
    case Encoding::Digits:
        if (!IsDecimal(text))
            return QStringLiteral("has characters other than digits");
        if (text.size() > field.width)
            return QStringLiteral("is longer than %1 digits").arg(field.width);
        WriteLatin1(data, field.offset, field.width, text);
        return {};
    case Encoding::Text:
        problem = TextProblem(text, field.width);
        if (problem.isEmpty())
            WriteLatin1(data, field.offset, field.width, text);
        return problem;
    case Encoding::CountedText:
        problem = TextProblem(text, field.width - 1);
        if (problem.isEmpty()) {
            data[size_t(field.offset)] = uint8_t(text.size());
            WriteLatin1(data, field.offset + 1, field.width - 1, text);
        }
        return problem;
    case Encoding::Number:
        if (const auto value = ParseNumber(text, field.width, problem))
            WriteNumber(data, field.offset, field.width, *value);
        return problem;
    case Encoding::Hex: {
        bool ok = false;
        const uint64_t value = text.toULongLong(&ok, 16);
        if (!ok || !IsHexadecimal(text) || text.size() > 2 * field.width)
            return QStringLiteral("is not a hexadecimal number of at most %1 digits").arg(2 * field.width);
        WriteNumber(data, field.offset, field.width, value);
        return {};
    }
    case Encoding::Choice: {
        const qsizetype position = field.choices.indexOf(text);
        if (position >= 0) {
            WriteNumber(data, field.offset, field.width, uint64_t(position));
            return {};
        }
        // A number outside the list, as a read shows it, goes back as it was.
        if (const auto value = ParseNumber(text, field.width, problem);
            value && *value >= uint64_t(field.choices.size())) {
            WriteNumber(data, field.offset, field.width, *value);
            return {};
        }
        return QStringLiteral("is not one of %1").arg(field.choices.join(QStringLiteral(", ")));
    }
    case Encoding::Address:
        if (const auto bytes = ParseAddress(text)) {
            std::copy(bytes->begin(), bytes->end(), data.begin() + field.offset);
            return {};
        }
        return QStringLiteral("is not an address of four numbers up to 255, as 192.0.2.1");
    }
    return {};
}

} // namespace tessaly::model
