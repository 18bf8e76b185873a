// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Where a handset's preferred roaming list is read from and written to,
// whole: a real handset over its link (link/RoamingList.h), or the list the
// simulated handset keeps in a file beside its NV memory. PutRoamingList is
// the one way a list is written, with the checks of every write.
#pragma once

#include <QByteArray>
#include <QString>

namespace tessaly::model {

class RoamingListSource {
public:
    virtual ~RoamingListSource() = default;

    // The list as the handset holds it, valid or not. Throws TessalyError
    // when it cannot be read.
    virtual QByteArray read() = 0;
    // Keeps `held`, the handset's list before a write, where the user finds
    // it again, and tells where. Throws TessalyError when it cannot be kept.
    virtual QString keep(const QByteArray& held) = 0;
    // Writes `list` as the handset's list. Throws TessalyError when the
    // handset does not take it.
    virtual void write(const QByteArray& list) = 0;
};

// Writes `list` through `source` with the care of every roaming list write:
// its size field, CRC and tables checked before a byte is sent (a damaged
// list is refused with errValueRefused and nothing written), the handset's
// list read and kept first, the list written, then read back and compared
// whole. Gives where the handset's list was kept. Throws TessalyError.
QString PutRoamingList(RoamingListSource& source, const QByteArray& list);

// The simulated handset's list, kept in the file `path`; a handset without
// the file holds the factory list (model/FactoryPrl.h). The list before each
// write is kept in `path` with ".bak" after it.
class FileRoamingList : public RoamingListSource {
public:
    explicit FileRoamingList(QString path);

    QByteArray read() override;
    QString keep(const QByteArray& held) override;
    void write(const QByteArray& list) override;

private:
    QString m_path;
};

} // namespace tessaly::model
