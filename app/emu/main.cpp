// tessaly-emu: a CDMA handset on a pseudo-terminal, answering the diagnostic
// protocol from an NV memory file of the simulated handset's format. It
// prints the terminal's path, then serves until it is stopped. Switches make
// the faults of real handsets and lines; the state file makes those of items:
// an item kept with status 7 (read-only) or 8 (not valid) is answered with
// that status, for reads and writes alike. The ESN is never written.
#include "link/DiagPackets.h"
#include "link/FrameCodec.h"
#include "model/Catalogue.h"
#include "model/FileNvMemory.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <thread>

using namespace tessaly;

namespace {

struct Faults {
    QString spc;        // writes are refused with 0x42 until this SPC unlocks them
    int slowMs = 0;     // each reply waits so long
    int badCrcEvery = 0; // every Nth reply goes out with a broken CRC
    bool events = false; // an event report goes out before each reply
    int deadAfter = 0;  // the line goes dead after so many requests
    int garbled = -1;   // writes of this item keep other bytes than were sent
    int lateAt = 0;     // the reply to this request comes late, by lateMs
    int lateMs = 0;
};

class Handset {
public:
    Handset(model::NvMemory& memory, Faults faults)
        : m_memory(memory)
        , m_faults(std::move(faults))
        , m_locked(!m_faults.spc.isEmpty())
    {
        for (const model::NvAddress& address : model::Catalogue::BuiltIn().addresses())
            if (address.index >= 0)
                m_indexed.insert(address.item);
    }

    QByteArray answer(const QByteArray& request)
    {
        const auto command = uint8_t(request[0]);
        if (command == link::CmdVersion)
            return QByteArray(1, char(link::CmdVersion)) + "TESSALY-EMU 1.0";
        if (command == link::CmdEsn) {
            model::NvData esn{};
            m_memory.read({0, -1}, esn);
            return QByteArray(1, char(link::CmdEsn)) + QByteArray(reinterpret_cast<const char*>(esn.data()), 4);
        }
        if (command == link::CmdSpc && request.size() == 7) {
            const bool right = !m_faults.spc.isEmpty() && request.mid(1) == m_faults.spc.toLatin1();
            m_locked = m_locked && !right;
            return QByteArray::fromHex(right ? "4101" : "4100");
        }
        if (command != link::CmdNvRead && command != link::CmdNvWrite)
            return QByteArray(1, char(0x13)) + request;
        if (request.size() != link::NvPacketSize)
            return QByteArray(1, char(0x15)) + request;
        if (command == link::CmdNvWrite && m_locked)
            return QByteArray(1, char(0x42));
        const uint16_t item = uint16_t(uint8_t(request[1]) | uint8_t(request[2]) << 8);
        model::NvData data{};
        for (size_t i = 0; i < data.size(); ++i)
            data[i] = uint8_t(request.at(qsizetype(i) + 3));
        const model::NvAddress address{item, m_indexed.count(item) ? int16_t(data[0]) : int16_t(-1)};
        model::NvData kept{};
        model::NvStatus status = m_memory.read(address, kept);
        if (command == link::CmdNvRead) {
            data = kept;
            if (address.index >= 0)
                data[0] = uint8_t(address.index); // an indexed item's reply carries its index
        } else if (item == model::EsnItem) {
            status = model::NvStatus::ReadOnly;
        } else if (status != model::NvStatus::ReadOnly && status != model::NvStatus::NotValid) {
            if (item == m_faults.garbled)
                data[data.size() - 1] ^= 0x5A;
            status = m_memory.write(address, data);
            m_memory.commit();
        }
        QByteArray reply = link::NvItemRequest(link::Command(command), item, data);
        reply[131] = char(uint16_t(status) & 0xFF);
        return reply;
    }

    const Faults& faults() const { return m_faults; }

private:
    model::NvMemory& m_memory;
    Faults m_faults;
    bool m_locked;
    std::set<uint16_t> m_indexed;
};

void WriteAll(int fd, const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n <= 0)
            return;
        done += n;
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessaly-emu"));
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("A CDMA handset on a pseudo-terminal, for halvane --port."));
    options.addHelpOption();
    const QCommandLineOption state(QStringLiteral("state"), QStringLiteral("The NV memory <file>."), QStringLiteral("file"));
    const QCommandLineOption spc(QStringLiteral("spc"), QStringLiteral("Lock writes until this <code> is given."), QStringLiteral("code"));
    const QCommandLineOption slow(QStringLiteral("slow"), QStringLiteral("Answer each request after <ms>."), QStringLiteral("ms"), QStringLiteral("0"));
    const QCommandLineOption badCrc(QStringLiteral("bad-crc"), QStringLiteral("Break the CRC of every <n>th reply."), QStringLiteral("n"), QStringLiteral("0"));
    const QCommandLineOption events(QStringLiteral("events"), QStringLiteral("Send an event report before each reply."));
    const QCommandLineOption dead(QStringLiteral("dead-after"), QStringLiteral("Go silent after <n> requests."), QStringLiteral("n"), QStringLiteral("0"));
    const QCommandLineOption garble(QStringLiteral("garble"), QStringLiteral("Keep other bytes than were written to NV <item>."), QStringLiteral("item"), QStringLiteral("-1"));
    const QCommandLineOption late(QStringLiteral("late"), QStringLiteral("Answer request <n> only after <ms>."), QStringLiteral("n:ms"), QStringLiteral("0:0"));
    options.addOptions({state, spc, slow, badCrc, events, dead, garble, late});
    // A wrong option is bad usage, exit status 2; process() would exit with 1.
    if (!options.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "tessaly-emu: %s\n", qPrintable(options.errorText()));
        return 2;
    }
    options.process(app); // --help and --help-all
    if (!options.isSet(state)) {
        std::fprintf(stderr, "tessaly-emu: --state FILE is needed\n");
        return 2;
    }

    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        std::perror("tessaly-emu: pseudo-terminal");
        return 1;
    }
    const char* path = ptsname(master);
    // Held open so that the line stays up while clients come and go.
    const int slave = ::open(path, O_RDWR | O_NOCTTY);
    termios raw{};
    tcgetattr(slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(slave, TCSANOW, &raw);
    std::printf("%s\n", path);
    std::fflush(stdout);

    model::FileNvMemory memory(options.value(state), model::Catalogue::BuiltIn().factory());
    if (!memory.lastProblem().isEmpty()) {
        std::fprintf(stderr, "tessaly-emu: %s\n", qPrintable(memory.lastProblem()));
        return 1;
    }
    const QStringList lateness = options.value(late).split(QLatin1Char(':'));
    Handset handset(memory, {options.value(spc), options.value(slow).toInt(), options.value(badCrc).toInt(),
                             options.isSet(events), options.value(dead).toInt(), options.value(garble).toInt(),
                             lateness.value(0).toInt(), lateness.value(1).toInt()});
    link::FrameDecoder decoder;
    int requests = 0;
    int replies = 0;
    char buffer[4096];
    while (true) {
        const ssize_t n = ::read(master, buffer, sizeof buffer);
        if (n <= 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            continue;
        }
        for (const QByteArray& request : decoder.feed(QByteArrayView(buffer, n))) {
            ++requests;
            const Faults& faults = handset.faults();
            if (request.isEmpty() || (faults.deadAfter > 0 && requests > faults.deadAfter))
                continue;
            QByteArray reply = link::EncodeFrame(handset.answer(request));
            if (faults.slowMs > 0 || requests == faults.lateAt)
                std::this_thread::sleep_for(std::chrono::milliseconds(requests == faults.lateAt ? faults.lateMs : faults.slowMs));
            if (faults.events)
                WriteAll(master, link::EncodeFrame(QByteArray::fromHex("6000ff")));
            if (faults.badCrcEvery > 0 && ++replies % faults.badCrcEvery == 0)
                reply[reply.size() - 2] = char(reply[reply.size() - 2] ^ 0x01);
            WriteAll(master, reply);
        }
    }
}
