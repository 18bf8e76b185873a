// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/RoamingListSource.h"

#include "model/ErrorNumbers.h"
#include "model/FactoryPrl.h"
#include "model/NvFile.h"
#include "model/Prl.h"

#include <tessaly/TessalyError.h>

#include <QFile>

namespace tessaly::model {

QString PutRoamingList(RoamingListSource& source, const QByteArray& list)
{
    if (const QString problem = PrlProblem(list); !problem.isEmpty())
        throw TessalyError(errValueRefused,
                           QStringLiteral("the roaming list is refused: %1 Nothing was written to the handset.")
                               .arg(problem));
    const QString kept = source.keep(source.read());
    source.write(list);
    if (source.read() != list)
        throw TessalyError(errItemUnwritable, QStringLiteral("the handset's roaming list reads back different from "
                                                             "what was written; the list it held is kept in %1")
                                                  .arg(kept));
    return kept;
}

FileRoamingList::FileRoamingList(QString path)
    : m_path(std::move(path))
{
}

QByteArray FileRoamingList::read()
{
    QFile file(m_path);
    if (!file.exists())
        return EncodePrl(FactoryPrl());
    if (!file.open(QIODevice::ReadOnly))
        throw TessalyError(errItemUnreadable,
                           QStringLiteral("the roaming list %1 cannot be read: %2").arg(m_path, file.errorString()));
    return file.readAll();
}

QString FileRoamingList::keep(const QByteArray& held)
{
    const QString path = m_path + QStringLiteral(".bak");
    if (const QString problem = WriteWhole(path, held); !problem.isEmpty())
        throw TessalyError(errMemoryNotSaved,
                           QStringLiteral("the roaming list could not be kept in %1: %2. Nothing was written")
                               .arg(path, problem));
    return path;
}

void FileRoamingList::write(const QByteArray& list)
{
    if (const QString problem = WriteWhole(m_path, list); !problem.isEmpty())
        throw TessalyError(errMemoryNotSaved,
                           QStringLiteral("the roaming list could not be written to %1: %2").arg(m_path, problem));
}

} // namespace tessaly::model
