#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

/// Keeps the time that a server may take. The driver counts the silence between two bytes, waits as long again after it,
/// and waits for ever for a server that says a byte now and then; this counts from the call, and then shuts the line,
/// so that the driver comes back.
class TOdbcLine {
public:
    TOdbcLine() = default;
    ~TOdbcLine();
    TOdbcLine(const TOdbcLine &) = delete;
    TOdbcLine &operator=(const TOdbcLine &) = delete;

    /// One call of the driver that may wait for the server; the line is shut when it takes longer than `seconds`.
    class TTurn {
    public:
        TTurn(TOdbcLine &line, int seconds) : m_line(line) { m_line.start(seconds); }
        ~TTurn() { m_line.stop(); }
        TTurn(const TTurn &) = delete;

    private:
        TOdbcLine &m_line;
    };

    /// Called before the driver connects: what it opens from here on, to this port, is the line. 0: the port is not known.
    void beforeConnect(int port);
    void afterConnect();
    /// Whether the line was shut, since beforeConnect(), because its time was over.
    bool isGivenUp();
    /// Whether the other end has closed the line meanwhile, as far as this machine knows: nothing is sent for it.
    bool isClosed();

private:
    using TSockets = std::set<std::pair<int, unsigned long>>;
    TSockets sockets() const;
    TSockets newSockets() const;
    void start(int seconds);
    void stop();
    void work();
    void shut();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::thread m_thread; ///< begun by the first turn
    std::chrono::steady_clock::time_point m_end;
    bool m_running = false;
    bool m_leaving = false;
    bool m_givenUp = false;
    bool m_connecting = false;
    int m_port = 0;
    TSockets m_before;
    TSockets m_socket;                                 ///< the driver's; empty: not known
    std::chrono::steady_clock::time_point m_awaited{}; ///< when the thread wakes by itself
};
