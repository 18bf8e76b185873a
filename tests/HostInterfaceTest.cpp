// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The host interface as a dynamic host uses it: every method by name with
// `short` or `int` arguments, failures told by CallFailed and never thrown,
// and long random runs of calls through the meta-object system with extreme
// arguments, every box answered, after each of which what the call promised
// holds. The sanitizer build runs them too. (The package test makes calls by
// name from a host that loads the library.)
#include "support/PanelFixture.h"
#include "support/TestModel.h"

#include <QMetaMethod>
#include <QSignalSpy>

#include <random>

using namespace tessaly;

namespace {

// The methods callable by name, every signature of each.
QList<QMetaMethod> ByNameMethods()
{
    QList<QMetaMethod> methods;
    const QMetaObject& meta = TessalyByName::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        if (meta.method(i).methodType() == QMetaMethod::Method)
            methods << meta.method(i);
    return methods;
}

// One call through the meta-object system, its arguments and what it gave.
struct Call {
    QMetaMethod method;
    std::vector<QVariant> values;
    QVariant result;

    int integer(int i) const { return values[size_t(i)].toInt(); }
    QString string(int i) const { return values[size_t(i)].toString(); }
    bool is(const char* name) const { return method.name() == name; }

    // Through the meta-call, as script engines call.
    void invoke(Tessaly& panel)
    {
        result = QVariant(method.returnMetaType(), nullptr);
        std::vector<void*> argv{result.data()};
        for (QVariant& value : values)
            argv.push_back(value.data());
        QMetaObject::metacall(&panel, QMetaObject::InvokeMetaMethod, method.methodIndex(), argv.data());
    }
};

// Extreme and ordinary values of each argument type.
struct Arguments {
    explicit Arguments(unsigned seed)
        : random(seed)
    {
        // A model that steps before any total and whose Restore fails.
        model.onRead = [](TestModel& m) { emit m.StepIt(1); };
        model.onRestore = [](TestModel&) { throw TessalyError(7, QStringLiteral("no backup")); };
    }

    std::mt19937 random;
    TestModel model;
    const QString huge = QString(100000, QLatin1Char('9'));

    template <class T>
    T pick(std::initializer_list<T> values)
    {
        return values.begin()[std::uniform_int_distribution<size_t>(0, values.size() - 1)(random)];
    }

    Call make(const QMetaMethod& method)
    {
        Call call{method, {}, {}};
        for (int i = 0; i < method.parameterCount(); ++i) {
            switch (method.parameterMetaType(i).id()) {
            case QMetaType::Short:
                call.values.emplace_back(QVariant::fromValue(
                    pick<short>({-32768, -1, 0, 1, 2, 3, 5, 6, 7, 13, 20, 21, 22, 100, 32767})));
                break;
            case QMetaType::Int:
                call.values.emplace_back(
                    QVariant::fromValue(pick<int>({INT32_MIN, -40000, -1, 0, 1, 2, 3, 6, 21, 40, 99, 100, 101, 40000, INT32_MAX})));
                break;
            case QMetaType::Bool: call.values.emplace_back(QVariant::fromValue(pick({false, true}))); break;
            case QMetaType::QString:
                call.values.emplace_back(QVariant::fromValue(pick<QString>({QString(), "x", "#####", "a|b||c|", "LOCK CODE",
                    "Mobile Directory Number (MDN)", "Primary CDMA Channel, A band", huge})));
                break;
            default: call.values.emplace_back(QVariant::fromValue(pick<IBaseModel*>({nullptr, &model}))); break;
            }
        }
        return call;
    }
};

} // namespace

// Whether C++ can call the profile count getter on a `Panel`: the by-name
// methods must not be, or a failure's rule would follow the pointer's type.
template <class Panel>
concept ProfileCountCallableFromCpp = requires(Panel& panel) { panel.GetProfileCount(); };

using HostInterfaceTest = PanelFixture;

TEST_F(HostInterfaceTest, AllTwentyTwoMethodsTakeShortOrIntByName)
{
    QStringList names;
    const QMetaObject& meta = TessalyByName::staticMetaObject;
    for (const QMetaMethod& method : ByNameMethods()) {
        QByteArray wide = method.methodSignature();
        wide.replace("short", "int");
        EXPECT_GE(meta.indexOfMethod(wide), 0) << wide.constData();
        if (!names.contains(QString::fromLatin1(method.name())))
            names << QString::fromLatin1(method.name());
    }
    names.sort();
    EXPECT_EQ(names.join(QLatin1Char(' ')).toStdString(),
              "AddItemToGrd AddItemToGrid2 AddTab GetAKey GetActiveProfileIndex GetItemFromGrd GetLockCode "
              "GetProfileCount GetSecCode RemoveTab SetActiveProfileEnable SetActiveProfileIndex SetBasicInfo "
              "SetGrid1Rows SetGrid2Rows SetModelDLL SetNVFieldItemCount SetProfileCount SetProfileCountEnable "
              "SetSecurityInfo SetSettingRows SetSystemRows");
}

TEST_F(HostInterfaceTest, AFailedCallByNameIsToldNotThrown)
{
    QSignalSpy failures(host.get(), &TessalyByName::CallFailed);
    // No added page to remove, directly and queued; a column count beyond a short.
    EXPECT_TRUE(QMetaObject::invokeMethod(host.get(), "RemoveTab", Q_ARG(int, 21)));
    EXPECT_TRUE(QMetaObject::invokeMethod(host.get(), "RemoveTab", Qt::QueuedConnection, Q_ARG(short, 21)));
    QCoreApplication::processEvents();
    int page = 0;
    EXPECT_TRUE(QMetaObject::invokeMethod(host.get(), "AddTab", Q_RETURN_ARG(int, page), Q_ARG(QString, QStringLiteral("A")),
                                          Q_ARG(int, 70000)));
    EXPECT_EQ(page, -1);
    ASSERT_EQ(failures.size(), 3);
    EXPECT_EQ(failures[0][0].toString(), "RemoveTab");
    EXPECT_EQ(failures[0][1].toInt(), errInvalidProcedureCall);
    EXPECT_TRUE(failures[0][2].toString().contains(QLatin1String("newest")));
    EXPECT_EQ(failures[1], failures[0]);
    EXPECT_EQ(failures[2], (QList<QVariant>{QStringLiteral("AddTab"), int(errOverflow), QStringLiteral("Overflow")}));
    EXPECT_THROW(host->RemoveTab(21), TessalyError); // the C++ method throws
    static_assert(ProfileCountCallableFromCpp<Tessaly> && !ProfileCountCallableFromCpp<TessalyByName>);
}

TEST_F(HostInterfaceTest, RandomCallsByNameKeepThePanelsPromises)
{
    const QList<QMetaMethod> methods = ByNameMethods();
    DialogAnswerer answerer;
    for (unsigned seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        host->hide(); // what is drawn is not under test here, and values of 100,000 digits draw slowly
        QSignalSpy failures(host.get(), &TessalyByName::CallFailed);
        Arguments arguments(seed);
        std::uniform_int_distribution<qsizetype> which(0, methods.size() - 1);
        for (int step = 0; step < 3000; ++step) {
            Call call = arguments.make(methods[which(arguments.random)]);
            SCOPED_TRACE(call.method.methodSignature().constData());
            const qsizetype boxes = answerer.seen().size();
            const qsizetype failed = failures.size();
            call.invoke(*host);
            const bool quiet = answerer.seen().size() == boxes && failures.size() == failed;

            if (failures.size() > failed) {
                EXPECT_EQ(failures.last()[0].toByteArray(), call.method.name());
                EXPECT_NE(failures.last()[1].toInt(), 0);
                EXPECT_FALSE(failures.last()[2].toString().isEmpty());
            }
            if (quiet && call.is("AddItemToGrd")) {
                EXPECT_EQ(host->GetItemFromGrd(short(call.integer(0)), call.integer(6), call.integer(7) - 1),
                          call.string(5));
            }
            if (quiet && call.is("SetProfileCount")) {
                EXPECT_EQ(host->GetProfileCount(), std::max(1, call.integer(0))); // 0 clears the count: 1
            }
            if (quiet && call.is("AddTab")) { // the added page is there, titled
                EXPECT_EQ(host->GetItemFromGrd(short(call.result.toInt()), 0, -1), "NV Items");
            }
            const int count = host->GetProfileCount();
            EXPECT_TRUE(count >= 1 && count <= 6) << count;
            const int active = host->GetActiveProfileIndex();
            EXPECT_TRUE(active >= 0 && active <= 5) << active;
            ASSERT_EQ(host->size(), QSize(720, 562));

            // Now and then the user clicks a command.
            if (step % 100 == 0)
                clickCommand(arguments.pick<int>({0, 1, 3}));
        }
        host.reset();
        SetUp();
    }
}
