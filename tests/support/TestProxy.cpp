#include "support/TestProxy.h"

#include "host/database/OdbcConnectionString.h"
#include "support/TestServer.h"

#include <algorithm>
#include <chrono>
#include <list>
#include <netdb.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

int connectTo(const QByteArray &host, int port)
{
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(host.constData(), QByteArray::number(port).constData(), &hints, &found) != 0)
        return -1;
    int result = -1;
    for (addrinfo *one = found; one && result < 0; one = one->ai_next) {
        result = socket(one->ai_family, one->ai_socktype, one->ai_protocol);
        if (result >= 0 && connect(result, one->ai_addr, one->ai_addrlen) != 0) {
            ::close(result);
            result = -1;
        }
    }
    freeaddrinfo(found);
    return result;
}

QByteArray number(quint64 value, int bytes)
{
    QByteArray text;
    for (; bytes > 0; --bytes, value >>= 8)
        text.append(char(value & 0xff)); // the low byte first
    return text;
}

QByteArray utf16(const QString &text)
{
    QByteArray bytes;
    for (const QChar c : text)
        bytes += number(c.unicode(), 2);
    return bytes;
}

} // namespace

QByteArray TestProxy::refusal(int messageNumber, const QString &message)
{
    const char login = 16; // the severity
    const QByteArray error = number(quint64(messageNumber), 4) + char(1) + login +
                             number(quint64(message.size()), 2) + utf16(message) + char(0) + char(0) +
                             number(1, 4);
    const QByteArray tokens =
        char(0xaa) + number(quint64(error.size()), 2) + error + char(0xfd) + number(2, 2) + number(0, 10);
    const int size = int(tokens.size()) + 8;
    return QByteArray("\x04\x01", 2) + char(size >> 8) + char(size & 0xff) + QByteArray("\0\0\1\0", 4) +
           tokens;
}

namespace {

const char loginPacket = 0x10;

bool sendAll(int to, const char *bytes, ssize_t size)
{
    while (size > 0) {
        const ssize_t sent = send(to, bytes, std::size_t(size), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= sent;
    }
    return true;
}

} // namespace

TestProxy::TestProxy(const QString &connectionString, Privacy privacy)
{
    const TOdbcConnectionString string(connectionString);
    m_host = string.value(u"SERVER"_s).toUtf8();
    m_port = string.value(u"PORT"_s).toInt();
    if (m_port == 0)
        m_port = 1433;
    m_listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    if (bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) != 0 || listen(m_listener, 16) != 0 ||
        getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size) != 0)
        throw std::runtime_error("no port for the test's line");
    m_connectionString = TestServer::with(connectionString, u"SERVER"_s, u"127.0.0.1"_s);
    m_connectionString =
        TestServer::with(m_connectionString, u"PORT"_s, QString::number(ntohs(address.sin_port)));
    if (privacy == Readable) {
        m_connectionString = TestServer::with(m_connectionString, u"Encrypt"_s, u"no"_s);
        m_connectionString = TestServer::with(m_connectionString, u"Encryption"_s, u"off"_s);
    }
    m_thread = std::thread([this] { work(); });
}

TestProxy::~TestProxy()
{
    m_stop = true;
    m_thread.join();
    ::close(m_listener);
}

void TestProxy::cut()
{
    m_isCut = true;
    // The thread looks every 10 milliseconds.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
}

void TestProxy::restore()
{
    m_isCut = false;
}

void TestProxy::watch(const QString &text, bool before)
{
    const std::lock_guard lock(m_mutex);
    m_watched = utf16(text).toLower(); // as requests carry their texts
    m_cutBefore = before;
}

void TestProxy::cutAtTrip(int number, bool before)
{
    const std::lock_guard lock(m_mutex);
    m_cutBefore = before;
    m_trips = 0;
    m_cutAt = number;
}

QByteArray TestProxy::record()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_record, {});
}

void TestProxy::refuseLogins(int messageNumber, const QString &message)
{
    const std::lock_guard lock(m_mutex);
    m_refusal = messageNumber == 0 ? QByteArray() : refusal(messageNumber, message);
}

void TestProxy::close(TLine &line)
{
    ::close(line.client);
    ::close(line.server);
    line.client = line.server = -1;
}

bool TestProxy::pass(TLine &line, bool fromClient)
{
    char bytes[65536];
    const ssize_t size = recv(fromClient ? line.client : line.server, bytes, sizeof(bytes), 0);
    if (size <= 0)
        return false;
    if (m_records) {
        const std::lock_guard lock(m_mutex);
        m_record.append(bytes, size);
    }
    if (!fromClient) {
        m_fromServer += size;
        const bool begins = std::exchange(line.asks, false);
        for (int waited = 0; begins && waited < m_delay && !m_isCut && !m_stop; waited += 10)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        ssize_t at = 0;
        for (; m_trickle > 0 && at < size && !m_isCut && !m_stop; ++at) {
            if (!sendAll(line.client, bytes + at, 1))
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(m_trickle));
        }
        return !m_isCut && sendAll(line.client, bytes + at, size - at);
    }
    bool last = false;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_refusal.isEmpty() && bytes[0] == loginPacket) {
            sendAll(line.client, m_refusal.constData(), m_refusal.size());
            return false;
        }
        if (!std::exchange(line.asks, true))
            ++m_trips;
        const bool isCounted = m_cutAt > 0 && m_trips >= m_cutAt;
        if (isCounted || (!m_watched.isEmpty() && QByteArray(bytes, size).toLower().contains(m_watched))) {
            m_watched.clear();
            m_cutAt = 0;
            m_isCut = true;
            if (m_cutBefore)
                return false;
            last = true;
        }
    }
    m_toServer += size;
    const bool sent = sendAll(line.server, bytes, size);
    if (last) {
        // The server does its work, and nobody hears of it.
        pollfd answer{line.server, POLLIN, 0};
        poll(&answer, 1, 5000);
        return false;
    }
    return sent;
}

void TestProxy::work()
{
    std::list<TLine> lines;
    while (!m_stop) {
        if (m_isCut) {
            for (TLine &line : lines)
                close(line);
            lines.clear();
        }
        if (m_isSilent) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            continue;
        }
        std::vector<pollfd> polled{{m_listener, POLLIN, 0}};
        for (const TLine &line : lines) {
            polled.push_back({line.client, POLLIN, 0});
            polled.push_back({line.server, POLLIN, 0});
        }
        if (poll(polled.data(), polled.size(), 10) <= 0)
            continue;
        std::size_t at = 1;
        for (auto line = lines.begin(); line != lines.end(); at += 2) {
            bool alive = true;
            for (const bool fromClient : {true, false}) {
                const auto events = polled[at + (fromClient ? 0 : 1)].revents;
                if (alive && events != 0)
                    alive = pass(*line, fromClient);
            }
            if (alive) {
                ++line;
            } else {
                close(*line);
                line = lines.erase(line);
            }
        }
        if (polled[0].revents & POLLIN) {
            const int client = accept(m_listener, nullptr, nullptr);
            const int server = m_isCut ? -1 : connectTo(m_host, m_port);
            if (server < 0)
                ::close(client);
            else
                lines.push_back({client, server});
        }
    }
    for (TLine &line : lines)
        close(line);
}
