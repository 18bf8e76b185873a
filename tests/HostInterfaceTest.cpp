// The host interface as a whole: every method by name through Qt's
// meta-object system, and long random runs of calls with extreme arguments,
// every box answered. The sanitizer build runs them too.
#include "support/PanelFixture.h"

#include <QMetaMethod>

#include <random>

using namespace tessaly;

namespace {

struct QuietModel : IBaseModel {
    void NVRead() override { emit StepIt(1); }
    void GetModelName(QString& name) override { name = QStringLiteral("Quiet"); }
    void GetPortNumber(QString& port) override { port = QStringLiteral("3"); }
    void NVWrite() override {}
    void NVRestore() override { throw TessalyError(7, QStringLiteral("no backup")); }
};

// Extreme and ordinary values of each argument type.
struct Arguments {
    explicit Arguments(unsigned seed)
        : random(seed)
    {
    }

    std::mt19937 random;
    QuietModel model;
    const QString huge = QString(100000, QLatin1Char('9'));

    template <class T>
    T pick(std::initializer_list<T> values)
    {
        return values.begin()[std::uniform_int_distribution<size_t>(0, values.size() - 1)(random)];
    }
    int16_t int16() { return pick<int16_t>({-32768, -1, 0, 1, 2, 3, 5, 6, 7, 13, 20, 21, 22, 100, 32767}); }
    int32_t int32() { return pick<int32_t>({INT32_MIN, -1, 0, 1, 2, 40, 99, 100, 101, 4200, INT32_MAX}); }
    bool boolean() { return pick<bool>({false, true}); }
    QString string()
    {
        return pick<QString>({QString(), QStringLiteral("x"), QStringLiteral("#####"), QStringLiteral("a|b||c|"),
                              QStringLiteral("LOCK CODE"), QStringLiteral("Mobile Directory Number (MDN)"),
                              QStringLiteral("Primary CDMA Channel, A band"), huge});
    }
    IBaseModel* model_() { return pick<IBaseModel*>({nullptr, &model}); }

    // Calls `method` of `panel` with arguments of its types.
    void call(Tessaly& panel, const QMetaMethod& method)
    {
        std::vector<QVariant> values;
        for (int i = 0; i < method.parameterCount(); ++i) {
            switch (method.parameterMetaType(i).id()) {
            case QMetaType::Short: values.emplace_back(QVariant::fromValue(int16())); break;
            case QMetaType::Int: values.emplace_back(QVariant::fromValue(int32())); break;
            case QMetaType::Bool: values.emplace_back(QVariant::fromValue(boolean())); break;
            case QMetaType::QString: values.emplace_back(QVariant::fromValue(string())); break;
            default: values.emplace_back(QVariant::fromValue(model_())); break;
            }
        }
        const QList<QByteArray> types = method.parameterTypes();
        std::vector<QGenericArgument> arguments;
        for (int i = 0; i < method.parameterCount(); ++i)
            arguments.emplace_back(types[i].constData(), values[size_t(i)].constData());
        arguments.resize(10);
        QVariant result(method.returnMetaType(), nullptr);
        const QByteArray returnType = method.typeName();
        QGenericReturnArgument returned(returnType.constData(), result.data());
        try {
            method.invoke(&panel, Qt::DirectConnection, method.returnMetaType().id() == QMetaType::Void
                              ? QGenericReturnArgument() : returned,
                          arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5],
                          arguments[6], arguments[7], arguments[8], arguments[9]);
        } catch (const TessalyError&) {
            // AddTab and RemoveTab report to their caller.
        }
    }
};

QList<QMetaMethod> HostMethods()
{
    QList<QMetaMethod> methods;
    const QMetaObject& meta = Tessaly::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        if (meta.method(i).methodType() == QMetaMethod::Method && meta.method(i).access() == QMetaMethod::Public)
            methods << meta.method(i);
    return methods;
}

} // namespace

using HostInterfaceTest = PanelFixture;

TEST_F(HostInterfaceTest, AllTwentyTwoMethodsAreCallableByName)
{
    QStringList names;
    for (const QMetaMethod& method : HostMethods())
        names << QString::fromLatin1(method.name());
    names.sort();
    EXPECT_EQ(names.join(QLatin1Char(' ')).toStdString(),
              "AddItemToGrd AddItemToGrid2 AddTab GetAKey GetActiveProfileIndex GetItemFromGrd GetLockCode "
              "GetProfileCount GetSecCode RemoveTab SetActiveProfileEnable SetActiveProfileIndex SetBasicInfo "
              "SetGrid1Rows SetGrid2Rows SetModelDLL SetNVFieldItemCount SetProfileCount SetProfileCountEnable "
              "SetSecurityInfo SetSettingRows SetSystemRows");
}

TEST_F(HostInterfaceTest, RandomCallsWithExtremeArgumentsNeitherCrashNorHang)
{
    const QList<QMetaMethod> methods = HostMethods();
    DialogAnswerer answerer;
    for (unsigned seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        host->hide(); // what is drawn is not under test here, and values of 100,000 digits draw slowly
        Arguments arguments(seed);
        std::uniform_int_distribution<qsizetype> which(0, methods.size() - 1);
        for (int call = 0; call < 3000; ++call) {
            arguments.call(*host, methods[which(arguments.random)]);
            // Now and then the user clicks a command or a page.
            if (call % 100 == 0)
                QTest::mouseClick(panel().picCommand(arguments.pick<int>({0, 1, 3})), Qt::LeftButton, {},
                                  QPoint(20, 10));
        }
        host.reset();
        SetUp();
    }
}
