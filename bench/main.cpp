// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Runs the benchmarks with a QApplication, on the offscreen platform unless
// one is chosen.
#include <QApplication>

#include <benchmark/benchmark.h>

namespace {

// The offscreen platform says at every popup and modal box that it cannot
// grab the keyboard or raise a window; that says nothing about speed.
QtMessageHandler g_standard = nullptr;

void QuietAboutThePlatform(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!message.startsWith(QLatin1String("This plugin does not support")))
        g_standard(type, context, message);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    g_standard = qInstallMessageHandler(QuietAboutThePlatform);
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
