// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A model of the tests' own: each command runs the body a test gives it, which
// raises events in a chosen order or fails, and every call is recorded.
#pragma once

#include <tessaly/BaseModel.h>

#include <QStringList>

#include <functional>

class TestModel : public IBaseModel {
public:
    std::function<void(TestModel&)> onRead, onWrite, onRestore;
    QStringList calls;

    void NVRead() override { run("NVRead", onRead); }
    void GetModelName(QString& out) override { out = QStringLiteral("Test Phone"); }
    void GetPortNumber(QString& out) override { out = QStringLiteral("7"); }
    void NVWrite() override { run("NVWrite", onWrite); }
    void NVRestore() override { run("NVRestore", onRestore); }

    // A command of `steps` steps, announced first.
    void steps(int32_t total, int32_t steps)
    {
        emit GetTotalProgressCount(total, 7);
        for (int i = 0; i < steps; ++i)
            emit StepIt(7);
    }

private:
    void run(const char* call, const std::function<void(TestModel&)>& body)
    {
        calls << QLatin1String(call);
        if (body)
            body(*this);
    }
};
