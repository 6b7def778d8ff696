#include "host/database/OdbcLine.h"

#include <dirent.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace {

// Whether this leads over the network, and to this port where one is given.
bool isLine(int descriptor, int port)
{
    int type = 0;
    socklen_t size = sizeof(type);
    if (getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &size) != 0 || type != SOCK_STREAM)
        return false;
    sockaddr_storage peer{};
    size = sizeof(peer);
    if (getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &size) != 0)
        return false;
    if (peer.ss_family == AF_INET)
        return port == 0 || ntohs(reinterpret_cast<const sockaddr_in &>(peer).sin_port) == port;
    return peer.ss_family == AF_INET6 &&
           (port == 0 || ntohs(reinterpret_cast<const sockaddr_in6 &>(peer).sin6_port) == port);
}

} // namespace

TOdbcLine::~TOdbcLine()
{
    {
        const std::lock_guard lock(m_mutex);
        m_leaving = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

// The driver tells nobody its socket: it is the one that was not there before.
TOdbcLine::TSockets TOdbcLine::sockets() const
{
    TSockets found;
    DIR *folder = opendir("/proc/self/fd");
    while (const dirent *entry = folder ? readdir(folder) : nullptr) {
        const int descriptor = std::atoi(entry->d_name);
        struct stat status {};
        if (entry->d_name[0] != '.' && fstat(descriptor, &status) == 0 && S_ISSOCK(status.st_mode) &&
            isLine(descriptor, m_port))
            found.emplace(descriptor, status.st_ino);
    }
    if (folder)
        closedir(folder);
    return found;
}

TOdbcLine::TSockets TOdbcLine::newSockets() const
{
    TSockets found = sockets();
    for (const auto &known : m_before)
        found.erase(known);
    // Two that came at the same time cannot be told apart: then the driver's own clock has to do.
    return found.size() == 1 ? found : TSockets();
}

void TOdbcLine::beforeConnect(int port)
{
    const std::lock_guard lock(m_mutex);
    m_socket.clear();
    m_givenUp = false;
    m_connecting = true;
    m_port = port;
    m_before = sockets();
}

void TOdbcLine::afterConnect()
{
    const std::lock_guard lock(m_mutex);
    m_connecting = false;
    m_socket = newSockets();
}

bool TOdbcLine::isGivenUp()
{
    const std::lock_guard lock(m_mutex);
    return m_givenUp;
}

bool TOdbcLine::isClosed()
{
    const std::lock_guard lock(m_mutex);
    if (m_connecting || m_socket.empty())
        return false;
    const auto &[descriptor, node] = *m_socket.begin();
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || status.st_ino != node)
        return false; // closed by the driver, which knows
    pollfd line{descriptor, POLLRDHUP, 0};
    return poll(&line, 1, 0) > 0 && (line.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
}

void TOdbcLine::start(int seconds)
{
    {
        const std::lock_guard lock(m_mutex);
        m_end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        m_running = true;
        if (!m_thread.joinable())
            m_thread = std::thread([this] { work(); });
        if (m_awaited <= m_end)
            return; // it looks again by itself, so that a statement costs no waking
    }
    m_changed.notify_all();
}

void TOdbcLine::stop()
{
    const std::lock_guard lock(m_mutex);
    m_running = false;
}

void TOdbcLine::shut()
{
    m_givenUp = true;
    // The driver may have closed it meanwhile, and its number may be another's.
    const TSockets there = sockets();
    for (const auto &socket : m_connecting ? newSockets() : m_socket) {
        if (there.count(socket) > 0)
            shutdown(socket.first, SHUT_RDWR);
    }
}

void TOdbcLine::work()
{
    std::unique_lock lock(m_mutex);
    while (!m_leaving) {
        if (!m_running) {
            m_awaited = std::chrono::steady_clock::time_point::max();
            m_changed.wait(lock);
        } else if (std::chrono::steady_clock::now() < m_end) {
            m_awaited = m_end;
            const auto awaited = m_awaited; // the next turn sets another end meanwhile
            m_changed.wait_until(lock, awaited);
        } else {
            m_running = false;
            shut();
        }
    }
}
