// Reads what another program shows, over the bus of the desktop's accessibility, as programs for
// the blind do. Prints one line for each object:
//
//     <role name> TAB <name> TAB <text, with line feeds as "\n">
//
// Usage: AccessibleReader NAME. Looks for the program of that name for up to 20 seconds, then
// fails.

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QList>
#include <QThread>

#include <cstdio>

namespace {

struct Reference {
    QString service;
    QDBusObjectPath path;
};

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference)
{
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference)
{
    argument.beginStructure();
    argument << reference.service << reference.path;
    argument.endStructure();
    return argument;
}

constexpr int deepest = 30;

class Reader {
public:
    explicit Reader(QDBusConnection bus) : bus_(std::move(bus)) {}

    QList<Reference> children(const Reference& parent)
    {
        const QDBusMessage reply = call(parent, "Accessible", "GetChildren", {});
        if (reply.type() != QDBusMessage::ReplyMessage)
            return {};
        return qdbus_cast<QList<Reference>>(reply.arguments().value(0));
    }

    QString name(const Reference& object)
    {
        const QDBusMessage reply =
            call(object, nullptr, "Get", {"org.a11y.atspi.Accessible", "Name"});
        return reply.arguments().value(0).value<QDBusVariant>().variant().toString();
    }

    void print(const Reference& object, int depth)
    {
        const QString role =
            call(object, "Accessible", "GetRoleName", {}).arguments().value(0).toString();
        const QDBusMessage text = call(object, "Text", "GetText", {0, -1});
        QString shown = text.type() == QDBusMessage::ReplyMessage
                            ? text.arguments().value(0).toString()
                            : QString();
        shown.replace(QLatin1Char('\n'), QLatin1String("\\n"));
        std::printf("%s\t%s\t%s\n", qUtf8Printable(role), qUtf8Printable(name(object)),
                    qUtf8Printable(shown));
        if (depth == deepest)
            return;
        for (const Reference& child : children(object))
            print(child, depth + 1);
    }

private:
    // Without a name of an interface it is that of the properties.
    QDBusMessage call(const Reference& object, const char* interface, const char* method,
                      const QVariantList& arguments)
    {
        const QString full = interface ? QLatin1String("org.a11y.atspi.") + QLatin1String(interface)
                                       : QStringLiteral("org.freedesktop.DBus.Properties");
        QDBusMessage message = QDBusMessage::createMethodCall(object.service, object.path.path(),
                                                              full, QLatin1String(method));
        message.setArguments(arguments);
        return bus_.call(message, QDBus::Block, 5000);
    }

    QDBusConnection bus_;
};

}  // namespace

Q_DECLARE_METATYPE(Reference)

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 2)
        return 2;
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
    QElapsedTimer timer;
    timer.start();
    QDBusInterface launcher(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                            QStringLiteral("org.a11y.Bus"));
    const QDBusReply<QString> address = launcher.call(QStringLiteral("GetAddress"));
    if (!address.isValid()) {
        std::fprintf(stderr, "no accessibility bus: %s\n",
                     qUtf8Printable(address.error().message()));
        return 1;
    }
    Reader reader(QDBusConnection::connectToBus(address.value(), QStringLiteral("a11y")));
    const Reference desktop{QStringLiteral("org.a11y.atspi.Registry"),
                            QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))};
    while (timer.elapsed() < 20000) {
        for (const Reference& program : reader.children(desktop)) {
            if (reader.name(program) == QLatin1String(argv[1])) {
                reader.print(program, 0);
                return 0;
            }
        }
        QThread::msleep(50);
    }
    std::fprintf(stderr, "%s is not on the bus\n", argv[1]);
    return 1;
}
