#include "host/database/TlsCheck.h"

#include <QFile>

#include <gnutls/gnutls.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const int usualPort = 1433;
const char greetingPacket = 0x12;
const qsizetype headerSize = 8;

/// A plain line with one end of time for all that is done on it.
class TPlainLine {
public:
    TPlainLine(const TServerAddress &server, int seconds)
        : m_end(std::chrono::steady_clock::now() + std::chrono::seconds(seconds))
    {
        addrinfo hints{};
        hints.ai_socktype = SOCK_STREAM;
        addrinfo *found = nullptr;
        const QByteArray port = QByteArray::number(server.port > 0 ? server.port : usualPort);
        if (getaddrinfo(server.host.toUtf8().constData(), port.constData(), &hints, &found) != 0)
            return;
        for (const addrinfo *one = found; one && m_socket < 0; one = one->ai_next)
            connectTo(*one);
        freeaddrinfo(found);
    }
    ~TPlainLine()
    {
        if (m_socket >= 0)
            ::close(m_socket);
    }
    TPlainLine(const TPlainLine &) = delete;

    bool isOpen() const { return m_socket >= 0; }
    bool send(const QByteArray &bytes)
    {
        for (qsizetype at = 0; at < bytes.size();) {
            const ssize_t sent = waitFor(POLLOUT) ? ::send(m_socket, bytes.constData() + at,
                                                           std::size_t(bytes.size() - at), MSG_NOSIGNAL)
                                                  : -1;
            if (sent <= 0)
                return false;
            at += sent;
        }
        return true;
    }
    bool receive(char *bytes, qsizetype size)
    {
        for (qsizetype at = 0; at < size;) {
            const ssize_t got =
                waitFor(POLLIN) ? ::recv(m_socket, bytes + at, std::size_t(size - at), 0) : -1;
            if (got <= 0)
                return false;
            at += got;
        }
        return true;
    }

private:
    void connectTo(const addrinfo &address)
    {
        m_socket = ::socket(address.ai_family, address.ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC,
                            address.ai_protocol);
        int error = 0;
        socklen_t size = sizeof(error);
        if (m_socket >= 0 && (::connect(m_socket, address.ai_addr, address.ai_addrlen) == 0 ||
                              (errno == EINPROGRESS && waitFor(POLLOUT) &&
                               getsockopt(m_socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0)))
            return;
        if (m_socket >= 0)
            ::close(m_socket);
        m_socket = -1;
    }
    bool waitFor(short what)
    {
        using namespace std::chrono;
        const auto left = duration_cast<milliseconds>(m_end - steady_clock::now()).count();
        pollfd polled{m_socket, what, 0};
        return left > 0 && poll(&polled, 1, int(left)) > 0;
    }

    std::chrono::steady_clock::time_point m_end;
    int m_socket = -1;
};

/// The server's protocol, as far as the handshake: everything travels in packets of a header and a content.
class TGreeting {
public:
    explicit TGreeting(TPlainLine &line) : m_line(line) {}

    /// Greets; answers whether the server encrypts, nothing where it is no such server.
    std::optional<bool> offersEncryption()
    {
        // Version, encryption (on), end of the list; then their values.
        const QByteArray wishes("\x00\x00\x0b\x00\x06\x01\x00\x11\x00\x01\xff\x09\x00\x00\x00\x00\x00\x01",
                                18);
        QByteArray answer;
        if (!write(wishes) || !read(answer))
            return std::nullopt;
        const char end = char(0xff);
        const qsizetype entry = 5;
        for (qsizetype at = 0; at + entry <= answer.size() && answer[at] != end; at += entry) {
            const int place = uchar(answer[at + 1]) << 8 | uchar(answer[at + 2]);
            if (answer[at] == 1 && place < answer.size())
                return answer[place] != 2; // it can not
        }
        return std::nullopt;
    }
    bool write(const QByteArray &content)
    {
        const qsizetype size = content.size() + headerSize;
        return m_line.send(QByteArray(1, greetingPacket) + char(1) + char(size >> 8) + char(size & 0xff) +
                           QByteArray("\0\0\1\0", 4) + content);
    }
    bool read(QByteArray &content)
    {
        char header[headerSize];
        if (!m_line.receive(header, headerSize))
            return false;
        const qsizetype size = (uchar(header[2]) << 8 | uchar(header[3])) - headerSize;
        content.resize(std::max(size, qsizetype(0)));
        return size > 0 && m_line.receive(content.data(), size);
    }

    QByteArray unread; ///< of the handshake
    QByteArray unsent;

private:
    TPlainLine &m_line;
};

ssize_t pull(gnutls_transport_ptr_t place, void *bytes, std::size_t size)
{
    auto &greeting = *static_cast<TGreeting *>(place);
    if (!greeting.unsent.isEmpty() && !greeting.write(std::exchange(greeting.unsent, {})))
        return 0;
    if (greeting.unread.isEmpty() && !greeting.read(greeting.unread))
        return 0;
    const qsizetype taken = std::min(qsizetype(size), greeting.unread.size());
    std::copy_n(greeting.unread.constData(), taken, static_cast<char *>(bytes));
    greeting.unread.remove(0, taken);
    return taken;
}

// What belongs together goes in one packet: it is kept until an answer is wanted.
ssize_t push(gnutls_transport_ptr_t place, const void *bytes, std::size_t size)
{
    static_cast<TGreeting *>(place)->unsent.append(static_cast<const char *>(bytes), qsizetype(size));
    return ssize_t(size);
}

std::optional<TFault> faultOf(unsigned status)
{
    if (status & (GNUTLS_CERT_EXPIRED | GNUTLS_CERT_NOT_ACTIVATED))
        return TFault::ExpiredCertificate;
    if (status & GNUTLS_CERT_UNEXPECTED_OWNER)
        return TFault::OtherName;
    if (status != 0)
        return TFault::UnknownIssuer;
    return std::nullopt;
}

} // namespace

std::optional<TFault> WhatIsWrongWithTls(const TServerAddress &server, const QString &authorities,
                                         bool checked, int seconds)
{
    TPlainLine line(server, seconds);
    TGreeting greeting(line);
    if (!line.isOpen())
        return std::nullopt;
    const std::optional<bool> encrypts = greeting.offersEncryption();
    if (!encrypts.has_value())
        return std::nullopt;
    if (!*encrypts)
        return TFault::NoEncryption;
    if (!checked)
        return std::nullopt;

    gnutls_certificate_credentials_t known = nullptr;
    gnutls_session_t session = nullptr;
    gnutls_certificate_allocate_credentials(&known);
    if (authorities.isEmpty())
        gnutls_certificate_set_x509_system_trust(known);
    else
        gnutls_certificate_set_x509_trust_file(known, QFile::encodeName(authorities).constData(),
                                               GNUTLS_X509_FMT_PEM);
    gnutls_init(&session, GNUTLS_CLIENT);
    gnutls_priority_set_direct(session, "NORMAL:%COMPAT:-VERS-SSL3.0:-VERS-TLS1.0", nullptr); // the driver's
    gnutls_credentials_set(session, GNUTLS_CRD_CERTIFICATE, known);
    gnutls_transport_set_ptr(session, &greeting);
    gnutls_transport_set_pull_function(session, pull);
    gnutls_transport_set_push_function(session, push);
    std::optional<TFault> fault;
    unsigned status = 0;
    const QByteArray host = server.host.toUtf8();
    if (gnutls_handshake(session) == GNUTLS_E_SUCCESS &&
        gnutls_certificate_verify_peers3(session, host.constData(), &status) == GNUTLS_E_SUCCESS)
        fault = faultOf(status);
    gnutls_deinit(session);
    gnutls_certificate_free_credentials(known);
    return fault;
}
