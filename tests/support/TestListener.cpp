#include "support/TestListener.h"

#include "support/TestProxy.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <gnutls/gnutls.h>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const qsizetype headerSize = 8;

int byteAt(const QByteArray &bytes, qsizetype at)
{
    return uchar(bytes.at(at));
}

} // namespace

/// One who is connected: plain packets first, then the handshake within packets, then packets within the encryption.
struct TestListenerLine {
    TestListenerLine(TestListener &listener, int client) : listener(listener), client(client) {}

    bool receive(char *bytes, qsizetype size) const
    {
        for (qsizetype at = 0; at < size;) {
            pollfd polled{client, POLLIN, 0};
            if (listener.m_stop || poll(&polled, 1, 20) < 0)
                return false;
            if (polled.revents == 0)
                continue;
            const ssize_t got = recv(client, bytes + at, std::size_t(size - at), 0);
            if (got <= 0)
                return false;
            const std::lock_guard lock(listener.m_mutex);
            listener.m_record.append(bytes + at, got);
            at += got;
        }
        return true;
    }
    bool read(char *bytes, qsizetype size)
    {
        if (!encrypted)
            return receive(bytes, size);
        for (qsizetype at = 0; at < size;) {
            const ssize_t got = gnutls_record_recv(session, bytes + at, std::size_t(size - at));
            if (got <= 0)
                return false;
            at += got;
        }
        return true;
    }
    void write(const QByteArray &bytes)
    {
        if (encrypted)
            gnutls_record_send(session, bytes.constData(), std::size_t(bytes.size()));
        else
            send(client, bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL);
    }
    void writePacket(char type, const QByteArray &content)
    {
        const qsizetype size = content.size() + headerSize;
        write(QByteArray(1, type) + char(1) + char(size >> 8) + char(size & 0xff) +
              QByteArray("\0\0\1\0", 4) + content);
    }
    /// The contents of all packets up to the one that is the last.
    QByteArray readMessage()
    {
        QByteArray message;
        for (bool last = false; !last;) {
            char header[headerSize];
            if (!read(header, headerSize))
                return {};
            last = header[1] & 1;
            QByteArray content((uchar(header[2]) << 8 | uchar(header[3])) - headerSize, '\0');
            if (!read(content.data(), content.size()))
                return {};
            message += content;
        }
        return message;
    }

    TestListener &listener;
    int client;
    gnutls_session_t session = nullptr;
    bool encrypted = false;
    QByteArray unread;
    QByteArray unsent;
};

namespace {

ssize_t pull(gnutls_transport_ptr_t place, void *bytes, std::size_t size)
{
    auto &line = *static_cast<TestListenerLine *>(place);
    if (line.encrypted) {
        return line.receive(static_cast<char *>(bytes), qsizetype(size)) ? ssize_t(size) : 0;
    }
    if (!line.unsent.isEmpty())
        line.writePacket(0x12, std::exchange(line.unsent, {}));
    if (line.unread.isEmpty())
        line.unread = line.readMessage();
    const qsizetype taken = std::min(qsizetype(size), line.unread.size());
    std::copy_n(line.unread.constData(), taken, static_cast<char *>(bytes));
    line.unread.remove(0, taken);
    return taken;
}

ssize_t push(gnutls_transport_ptr_t place, const void *bytes, std::size_t size)
{
    auto &line = *static_cast<TestListenerLine *>(place);
    if (line.encrypted)
        return send(line.client, bytes, size, MSG_NOSIGNAL);
    line.unsent.append(static_cast<const char *>(bytes), qsizetype(size));
    return ssize_t(size);
}

// The text that the log-in has at a place of its table; a password's bytes are turned about.
QString textOf(const QByteArray &login, qsizetype place, bool isPassword = false)
{
    const int at = byteAt(login, place) | byteAt(login, place + 1) << 8;
    const int length = byteAt(login, place + 2) | byteAt(login, place + 3) << 8;
    QString text;
    for (int i = 0; i < length; ++i) {
        int bytes[2] = {byteAt(login, at + 2 * i), byteAt(login, at + 2 * i + 1)};
        for (int &byte : bytes) {
            if (isPassword) {
                byte ^= 0xa5;
                byte = (byte >> 4 | byte << 4) & 0xff;
            }
        }
        text.append(QChar(bytes[0] | bytes[1] << 8));
    }
    return text;
}

} // namespace

QByteArray TestListener::onTheLine(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

TestListener::TestListener(const QString &certificate, Manner manner, int messageNumber)
    : m_certificate(certificate), m_manner(manner), m_messageNumber(messageNumber)
{
    m_listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    if (bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) != 0 || listen(m_listener, 16) != 0 ||
        getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size) != 0)
        throw std::runtime_error("no port for the test's listener");
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { work(); });
}

TestListener::~TestListener()
{
    m_stop = true;
    m_thread.join();
    ::close(m_listener);
}

QString TestListener::connectionString() const
{
    return u"Driver=FreeTDS;Server=127.0.0.1;Port=%1;Database=d;UID=clerk;PWD=Right-Horse-7;LoginTimeout=3"_s
        .arg(m_port);
}

TestListener::TLogin TestListener::login()
{
    const std::lock_guard lock(m_mutex);
    return m_login;
}

QByteArray TestListener::record()
{
    const std::lock_guard lock(m_mutex);
    return m_record;
}

void TestListener::work()
{
    while (!m_stop) {
        pollfd polled{m_listener, POLLIN, 0};
        if (poll(&polled, 1, 20) <= 0)
            continue;
        const int client = accept(m_listener, nullptr, nullptr);
        ++m_visits;
        serve(client);
        ::close(client);
    }
}

void TestListener::serve(int client)
{
    const auto staysAway = [client] {
        char byte = 0;
        return recv(client, &byte, 1, MSG_DONTWAIT) == 0;
    };
    for (int part = 1; m_manner != Refuses && !m_stop && !staysAway(); ++part) {
        // A packet that never gets whole: its header says 4,000 bytes.
        if (m_manner == Trickles && part % 10 == 0)
            send(client, part == 10 ? "\4" : part == 20 ? "\1" : part == 30 ? "\17" : "\0", 1, MSG_NOSIGNAL);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (m_manner == Refuses)
        answer(client);
}

void TestListener::answer(int client)
{
    TestListenerLine line(*this, client);
    if (line.readMessage().isEmpty())
        return;
    // Version, encryption (required, or impossible), end of the list; then their values.
    const char encryption = m_certificate.isEmpty() ? 2 : 3;
    line.writePacket(0x04,
                     QByteArray("\x00\x00\x0b\x00\x06\x01\x00\x11\x00\x01\xff\x0f\x00\x00\x00\x00\x00", 17) +
                         encryption);
    gnutls_certificate_credentials_t own = nullptr;
    gnutls_certificate_allocate_credentials(&own);
    gnutls_init(&line.session, GNUTLS_SERVER);
    if (!m_certificate.isEmpty()) {
        const QByteArray name = QFile::encodeName(m_certificate);
        gnutls_certificate_set_x509_key_file(own, name.constData(), name.constData(), GNUTLS_X509_FMT_PEM);
        gnutls_priority_set_direct(line.session, "NORMAL:-VERS-TLS1.3", nullptr);
        gnutls_credentials_set(line.session, GNUTLS_CRD_CERTIFICATE, own);
        gnutls_transport_set_ptr(line.session, &line);
        gnutls_transport_set_pull_function(line.session, pull);
        gnutls_transport_set_push_function(line.session, push);
        if (gnutls_handshake(line.session) == GNUTLS_E_SUCCESS) {
            if (!line.unsent.isEmpty())
                line.writePacket(0x12, std::exchange(line.unsent, {}));
            line.encrypted = true;
        }
    }
    const qsizetype userPlace = 40, passwordPlace = 44, databasePlace = 68, tableEnd = 94;
    const QByteArray login = m_certificate.isEmpty() || line.encrypted ? line.readMessage() : QByteArray();
    if (login.size() > tableEnd) {
        {
            const std::lock_guard lock(m_mutex);
            m_login = {textOf(login, userPlace), textOf(login, passwordPlace, true),
                       textOf(login, databasePlace)};
        }
        line.write(TestProxy::refusal(m_messageNumber, u"The log-in of the test is refused."_s));
    }
    gnutls_deinit(line.session);
    gnutls_certificate_free_credentials(own);
}
