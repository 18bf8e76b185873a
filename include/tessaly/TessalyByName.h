// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

/**
 * \file TessalyByName.h
 * \brief The panel's host methods as a host calls them by name, and the
 * signal that tells a failed call, TessalyByName::CallFailed.
 */
#pragma once

#include <tessaly/tessaly_export.h>

#include <QString>
#include <QWidget>

class IBaseModel;
class Tessaly;

/**
 * \brief The panel's host methods as a host calls them by name through Qt's
 * meta-object system: QMetaObject::invokeMethod, QMetaMethod::invoke, a
 * script engine or a host that loads the library at run time.
 *
 * Each method of Tessaly is here under its own name with built-in Qt types,
 * so that it can be invoked directly or queued: a page number, a count or an
 * index as `short`, a row or column as `int`. A method with a `short`
 * argument has a second signature with `int` in its place, for hosts that
 * pass every whole number as an `int`:
 *
 * \snippet host.cpp by name
 *
 * The getters without arguments return `short` (Q_RETURN_ARG(short, ...)).
 *
 * A call by name never throws. When a method fails (AddTab or RemoveTab
 * refused, or an `int` outside -32768 to 32767 where the panel takes a
 * `short`: error 6, "Overflow"), the panel emits CallFailed with the method's
 * name, the error number and its description, before the call returns, and
 * the call returns -1 from AddTab, 0 or "" from the others. Refusals that the
 * panel tells the user in a message box (a bad page or column in a cell
 * operation) are not failures of the call.
 *
 * These methods are public to the meta-object system, so that script
 * engines, which call only the public methods of an object (QJSEngine, QML's
 * engine), reach them as `panel.SetNVFieldItemCount(0, 12)`; and private to
 * C++: a C++ host calls the methods of Tessaly itself, which throw
 * TessalyError as their documentation says. So whether a failure is thrown or
 * signalled depends on the way of calling, never on the type of the pointer a
 * call is made through.
 *
 * \snippet host.cpp script
 *
 * A host never makes a TessalyByName itself: every one is a Tessaly.
 */
class TESSALY_EXPORT TessalyByName : public QWidget {
    Q_OBJECT

Q_SIGNALS:
    /**
     * \brief A call by name of `method` failed with this error.
     *
     * Emitted before the failed call returns.
     * \param method The method's name, as "AddTab".
     * \param number The error's number: TessalyError::number() of the
     *        error the method threw, 6 for an `int` argument beyond a `short`.
     * \param description The error's description.
     */
    void CallFailed(const QString& method, int number, const QString& description);

private:
    friend class Tessaly;
    explicit TessalyByName(QWidget* parent);

    // moc reads the methods below as public, the compiler as private (see
    // above).
#ifdef Q_MOC_RUN
public:
#endif
    Q_INVOKABLE void AddItemToGrd(short Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                                  const QString& ComboStr, const QString& InputStr, int row, int col);
    Q_INVOKABLE void AddItemToGrd(int Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                                  const QString& ComboStr, const QString& InputStr, int row, int col);
    Q_INVOKABLE void AddItemToGrid2(short Part, const QString& FormatType, bool ReadOnly, const QString& ComboStr,
                                    const QString& InputStr, int row, int col);
    Q_INVOKABLE void AddItemToGrid2(int Part, const QString& FormatType, bool ReadOnly, const QString& ComboStr,
                                    const QString& InputStr, int row, int col);
    Q_INVOKABLE QString GetItemFromGrd(short Part, int row, int col);
    Q_INVOKABLE QString GetItemFromGrd(int Part, int row, int col);
    Q_INVOKABLE void SetNVFieldItemCount(short Part, short count);
    Q_INVOKABLE void SetNVFieldItemCount(int Part, int count);
    Q_INVOKABLE void SetGrid1Rows(short Number);
    Q_INVOKABLE void SetGrid1Rows(int Number);
    Q_INVOKABLE void SetGrid2Rows(short Number);
    Q_INVOKABLE void SetGrid2Rows(int Number);
    Q_INVOKABLE void SetSettingRows(short Number);
    Q_INVOKABLE void SetSettingRows(int Number);
    Q_INVOKABLE void SetSystemRows(short Number);
    Q_INVOKABLE void SetSystemRows(int Number);
    Q_INVOKABLE short AddTab(const QString& strTabName, short nFlexGridColCount);
    Q_INVOKABLE int AddTab(const QString& strTabName, int nFlexGridColCount);
    Q_INVOKABLE void RemoveTab(short TabNumber);
    Q_INVOKABLE void RemoveTab(int TabNumber);
    Q_INVOKABLE void SetModelDLL(IBaseModel* model);
    Q_INVOKABLE short GetProfileCount();
    Q_INVOKABLE void SetProfileCount(short count);
    Q_INVOKABLE void SetProfileCount(int count);
    Q_INVOKABLE short GetActiveProfileIndex();
    Q_INVOKABLE void SetActiveProfileIndex(short ActiveIdx);
    Q_INVOKABLE void SetActiveProfileIndex(int ActiveIdx);
    Q_INVOKABLE void SetActiveProfileEnable(bool bEnable);
    Q_INVOKABLE void SetProfileCountEnable(bool bEnable);
    Q_INVOKABLE void SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                                  const QString& MEID, const QString& LifeTime, const QString& LifeCnt);
    Q_INVOKABLE void SetSecurityInfo(const QString& SecCode, bool IsProVersion, const QString& LockCode,
                                     const QString& AKey0, const QString& AKey1, const QString& AkeyChk,
                                     const QString& SsdA0, const QString& SsdA1, const QString& SsdAChk,
                                     const QString& SsdB0, const QString& SsdB1, const QString& SsdBChk,
                                     const QString& count);
    Q_INVOKABLE QString GetSecCode();
    Q_INVOKABLE QString GetLockCode();
    Q_INVOKABLE QString GetAKey(short index);
    Q_INVOKABLE QString GetAKey(int index);
};
