// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Calls by name: each invokable forwards to the panel's own method, turns an
// `int` into the `short` the panel takes, and turns any exception into
// CallFailed and the failed call's return value.
#include <tessaly/Tessaly.h>

#include "platform/Numeric.h"
#include "platform/RuntimeError.h"

namespace {

short Narrow(int value)
{
    return tessaly::ToInt16(value);
}

// Runs `call` on the panel behind `byName`; a failure becomes the signal and
// the call returns `failed`.
template <class Result, class Call>
Result Guarded(TessalyByName& byName, const char* method, Result failed, Call&& call) noexcept
{
    tessaly::ErrRecord error;
    try {
        return call(static_cast<Tessaly&>(byName));
    } catch (const TessalyError& thrown) {
        error = {thrown.number(), thrown.description()};
    } catch (...) {
        error.Capture(std::current_exception());
    }
    Q_EMIT byName.CallFailed(QLatin1String(method), error.Number, error.Description);
    return failed;
}

struct Nothing {};

} // namespace

// A void method returns `Nothing` inside Guarded.
#define TESSALY_VOID_CALL(method, ...)                                                                            \
    Guarded(*this, #method, Nothing(), [&](Tessaly& panel) {                                                      \
        panel.method(__VA_ARGS__);                                                                                \
        return Nothing();                                                                                         \
    })
#define TESSALY_CALL(method, failed, ...)                                                                         \
    Guarded(*this, #method, failed, [&](Tessaly& panel) { return panel.method(__VA_ARGS__); })

// A queued SetModelDLL carries the model pointer through Qt's meta-type
// system, which must know its type by name.
TessalyByName::TessalyByName(QWidget* parent)
    : QWidget(parent)
{
    qRegisterMetaType<IBaseModel*>();
}

void TessalyByName::AddItemToGrd(short Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                                 const QString& ComboStr, const QString& InputStr, int row, int col)
{
    TESSALY_VOID_CALL(AddItemToGrd, Part, FormatType, IsNumber, ReadOnly, ComboStr, InputStr, row, col);
}

void TessalyByName::AddItemToGrd(int Part, const QString& FormatType, bool IsNumber, bool ReadOnly,
                                 const QString& ComboStr, const QString& InputStr, int row, int col)
{
    TESSALY_VOID_CALL(AddItemToGrd, Narrow(Part), FormatType, IsNumber, ReadOnly, ComboStr, InputStr, row, col);
}

void TessalyByName::AddItemToGrid2(short Part, const QString& FormatType, bool ReadOnly, const QString& ComboStr,
                                   const QString& InputStr, int row, int col)
{
    TESSALY_VOID_CALL(AddItemToGrid2, Part, FormatType, ReadOnly, ComboStr, InputStr, row, col);
}

void TessalyByName::AddItemToGrid2(int Part, const QString& FormatType, bool ReadOnly, const QString& ComboStr,
                                   const QString& InputStr, int row, int col)
{
    TESSALY_VOID_CALL(AddItemToGrid2, Narrow(Part), FormatType, ReadOnly, ComboStr, InputStr, row, col);
}

QString TessalyByName::GetItemFromGrd(short Part, int row, int col)
{
    return TESSALY_CALL(GetItemFromGrd, QString(), Part, row, col);
}

QString TessalyByName::GetItemFromGrd(int Part, int row, int col)
{
    return TESSALY_CALL(GetItemFromGrd, QString(), Narrow(Part), row, col);
}

void TessalyByName::SetNVFieldItemCount(short Part, short count)
{
    TESSALY_VOID_CALL(SetNVFieldItemCount, Part, count);
}

void TessalyByName::SetNVFieldItemCount(int Part, int count)
{
    TESSALY_VOID_CALL(SetNVFieldItemCount, Narrow(Part), Narrow(count));
}

void TessalyByName::SetGrid1Rows(short Number) { TESSALY_VOID_CALL(SetGrid1Rows, Number); }
void TessalyByName::SetGrid1Rows(int Number) { TESSALY_VOID_CALL(SetGrid1Rows, Narrow(Number)); }
void TessalyByName::SetGrid2Rows(short Number) { TESSALY_VOID_CALL(SetGrid2Rows, Number); }
void TessalyByName::SetGrid2Rows(int Number) { TESSALY_VOID_CALL(SetGrid2Rows, Narrow(Number)); }
void TessalyByName::SetSettingRows(short Number) { TESSALY_VOID_CALL(SetSettingRows, Number); }
void TessalyByName::SetSettingRows(int Number) { TESSALY_VOID_CALL(SetSettingRows, Narrow(Number)); }
void TessalyByName::SetSystemRows(short Number) { TESSALY_VOID_CALL(SetSystemRows, Number); }
void TessalyByName::SetSystemRows(int Number) { TESSALY_VOID_CALL(SetSystemRows, Narrow(Number)); }

short TessalyByName::AddTab(const QString& strTabName, short nFlexGridColCount)
{
    return TESSALY_CALL(AddTab, short(-1), strTabName, nFlexGridColCount);
}

int TessalyByName::AddTab(const QString& strTabName, int nFlexGridColCount)
{
    return TESSALY_CALL(AddTab, short(-1), strTabName, Narrow(nFlexGridColCount));
}

void TessalyByName::RemoveTab(short TabNumber) { TESSALY_VOID_CALL(RemoveTab, TabNumber); }
void TessalyByName::RemoveTab(int TabNumber) { TESSALY_VOID_CALL(RemoveTab, Narrow(TabNumber)); }

void TessalyByName::SetModelDLL(IBaseModel* model) { TESSALY_VOID_CALL(SetModelDLL, model); }

short TessalyByName::GetProfileCount() { return TESSALY_CALL(GetProfileCount, short(0)); }
void TessalyByName::SetProfileCount(short count) { TESSALY_VOID_CALL(SetProfileCount, count); }
void TessalyByName::SetProfileCount(int count) { TESSALY_VOID_CALL(SetProfileCount, Narrow(count)); }
short TessalyByName::GetActiveProfileIndex() { return TESSALY_CALL(GetActiveProfileIndex, short(0)); }
void TessalyByName::SetActiveProfileIndex(short ActiveIdx) { TESSALY_VOID_CALL(SetActiveProfileIndex, ActiveIdx); }
void TessalyByName::SetActiveProfileIndex(int ActiveIdx) { TESSALY_VOID_CALL(SetActiveProfileIndex, Narrow(ActiveIdx)); }
void TessalyByName::SetActiveProfileEnable(bool bEnable) { TESSALY_VOID_CALL(SetActiveProfileEnable, bEnable); }
void TessalyByName::SetProfileCountEnable(bool bEnable) { TESSALY_VOID_CALL(SetProfileCountEnable, bEnable); }

void TessalyByName::SetBasicInfo(const QString& PhoneVersion, const QString& WarrantyDate, const QString& ESN,
                                 const QString& MEID, const QString& LifeTime, const QString& LifeCnt)
{
    TESSALY_VOID_CALL(SetBasicInfo, PhoneVersion, WarrantyDate, ESN, MEID, LifeTime, LifeCnt);
}

void TessalyByName::SetSecurityInfo(const QString& SecCode, bool IsProVersion, const QString& LockCode,
                                    const QString& AKey0, const QString& AKey1, const QString& AkeyChk,
                                    const QString& SsdA0, const QString& SsdA1, const QString& SsdAChk,
                                    const QString& SsdB0, const QString& SsdB1, const QString& SsdBChk,
                                    const QString& count)
{
    TESSALY_VOID_CALL(SetSecurityInfo, SecCode, IsProVersion, LockCode, AKey0, AKey1, AkeyChk, SsdA0, SsdA1,
                      SsdAChk, SsdB0, SsdB1, SsdBChk, count);
}

QString TessalyByName::GetSecCode() { return TESSALY_CALL(GetSecCode, QString()); }
QString TessalyByName::GetLockCode() { return TESSALY_CALL(GetLockCode, QString()); }
QString TessalyByName::GetAKey(short index) { return TESSALY_CALL(GetAKey, QString(), index); }
QString TessalyByName::GetAKey(int index) { return TESSALY_CALL(GetAKey, QString(), Narrow(index)); }
