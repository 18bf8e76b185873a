// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Convert.h"

#include "link/Backup.h"
#include "link/ErrorNumbers.h"
#include "model/Xqcn.h"

#include <tessaly/TessalyError.h>

#include <QFileInfo>

#include <cstdio>

namespace halvane {

using namespace tessaly;

namespace {

enum class Kind { Json, Xqcn, Other };

Kind KindOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("json") ? Kind::Json : suffix == QLatin1String("xqcn") ? Kind::Xqcn : Kind::Other;
}

// An NV file of any kind: a backup, a full one, or a simulated handset's
// memory.
model::NvFile ReadJson(const QString& path)
{
    model::NvFile file;
    const QString problem = model::ReadNvFile(
        path, {model::NvFileKind::Backup, model::NvFileKind::FullBackup, model::NvFileKind::Memory}, file);
    if (!problem.isEmpty())
        throw TessalyError(link::errBackupUnreadable, QStringLiteral("%1 is refused: %2.").arg(path, problem));
    return file;
}

QString WriteXqcnFile(const QString& path, const model::NvFile& file)
{
    return model::WriteWhole(path, model::WriteXqcn(file.entries, file.files));
}

} // namespace

int Convert(const QString& from, const QString& to)
{
    const Kind in = KindOf(from);
    const Kind out = KindOf(to);
    if (in == Kind::Other || out == Kind::Other || in == out) {
        std::fprintf(stderr, "halvane: --convert goes from .json to .xqcn or from .xqcn to .json, by the files' "
                             "extensions\n");
        return 2;
    }
    if (QFileInfo::exists(to)) {
        std::fprintf(stderr, "halvane: %s is there already; it is not written over\n", qPrintable(to));
        return 1;
    }
    bool whole = true;
    try {
        QString problem;
        if (in == Kind::Json) {
            problem = WriteXqcnFile(to, ReadJson(from));
        } else {
            const link::Backup backup = link::Backup::Load(from);
            // A stream halvane does not know may hold what the handset needs:
            // each is named, and the exit status says the conversion is not
            // whole.
            for (const QString& stream : backup.passedOver)
                std::fprintf(stderr, "halvane: the stream %s of %s is passed over: halvane does not know it\n",
                             qPrintable(stream), qPrintable(from));
            whole = backup.passedOver.isEmpty();
            problem = model::WriteNvFile(to, backup.file());
        }
        if (!problem.isEmpty()) {
            std::fprintf(stderr, "halvane: %s could not be written: %s\n", qPrintable(to), qPrintable(problem));
            return 1;
        }
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s Nothing was written.\n", qPrintable(error.description()));
        return 1;
    }
    std::printf("%s\n", qPrintable(to));
    return whole ? 0 : 1;
}

} // namespace halvane
