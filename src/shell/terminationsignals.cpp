#include "shell/terminationsignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int kHandled[] = {SIGTERM, SIGINT, SIGHUP};

// Written by the handler, read by nobody else; a plain int is all a handler may touch.
volatile std::sig_atomic_t g_writeSocket = -1;

extern "C" void onTerminationSignal(int signalNumber) {
    const int savedErrno = errno;
    const unsigned char number = static_cast<unsigned char>(signalNumber);
    const int socket = g_writeSocket;
    // A full socket only loses a repeat of a signal already waiting to be read.
    if (socket >= 0) [[maybe_unused]]
        const ssize_t written = ::write(socket, &number, 1);
    errno = savedErrno;
}

void setDisposition(int signalNumber, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(signalNumber, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, m_sockets) != 0) {
        m_sockets[0] = m_sockets[1] = -1;
        return;
    }
    g_writeSocket = m_sockets[0];
    m_notifier = new QSocketNotifier(m_sockets[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::onReadable);
    for (const int signalNumber : kHandled)
        setDisposition(signalNumber, onTerminationSignal);
}

TerminationSignals::~TerminationSignals() {
    for (const int signalNumber : kHandled)
        setDisposition(signalNumber, SIG_DFL);
    g_writeSocket = -1;
    delete m_notifier;
    for (const int socket : m_sockets)
        if (socket >= 0) ::close(socket);
}

void TerminationSignals::onReadable() {
    unsigned char numbers[16];
    const ssize_t count = ::read(m_sockets[1], numbers, sizeof numbers);
    for (ssize_t i = 0; i < count; ++i) {
        // From now on this signal has its default effect again.
        setDisposition(numbers[i], SIG_DFL);
        Q_EMIT terminationRequested(numbers[i]);
    }
}

#include "moc_terminationsignals.cpp"
