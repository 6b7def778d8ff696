#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <mutex>
#include <thread>

/// A line between the program and its server that a test can cut, slow down and measure. It works in a thread of its
/// own, since the program waits for the server's answers.
class TestProxy {
public:
    /// Listens on a free port of this machine and passes all on to the server of a connection string.
    /// Readable: nothing is encrypted on the way, so that the texts of requests can be watched for.
    enum Privacy { Readable, AsGiven };
    explicit TestProxy(const QString &connectionString, Privacy privacy = Readable);
    ~TestProxy();
    TestProxy(const TestProxy &) = delete;

    /// The connection string through this line.
    QString connectionString() const { return m_connectionString; }

    /// Cuts all lines and lets no new one through, until restore().
    void cut();
    void restore();
    bool isCut() const { return m_isCut; }
    /// Cuts the line instead of passing on the request that holds this text, in whatever case: the server never sees
    /// it.
    void cutBefore(const QString &text) { watch(text, true); }
    /// Passes the request that holds this text on, and cuts the line before the answer.
    void cutAfter(const QString &text) { watch(text, false); }
    /// The protocol's answer of one error message, and the end of the answer.
    static QByteArray refusal(int messageNumber, const QString &message);
    /// Answers every login with this message of the server instead of passing it on; number 0 passes them on again.
    void refuseLogins(int number, const QString &message);
    /// Passes nothing on any more, either way, and cuts nothing; what came meanwhile is passed on afterwards.
    void setSilent(bool on) { m_isSilent = on; }
    /// Keeps every answer back for so long, as a long line does.
    void setDelay(int milliseconds) { m_delay = milliseconds; }
    /// Hands out an answer a byte at a time, so many milliseconds apart; 0: at once again.
    void setTrickle(int milliseconds) { m_trickle = milliseconds; }

    /// Keeps all bytes of both ways from here on; record() hands out what came since the last call.
    void startRecord() { m_records = true; }
    QByteArray record();

    /// Bytes from the server since the last resetBytes().
    qint64 bytesFromServer() const { return m_fromServer; }
    qint64 bytesToServer() const { return m_toServer; }
    void resetBytes() { m_fromServer = m_toServer = 0; }
    /// How often the program has asked and waited for an answer, a log-in's several questions each for itself.
    int trips() const { return m_trips; }
    void resetTrips() { m_trips = 0; }
    /// Cuts the line at the question of this number, counted from here on: the server does not see it, or is not heard.
    void cutAtTrip(int number, bool before);

private:
    struct TLine {
        int client;
        int server;
        bool asks = false; ///< what passed last came from the program
    };
    void watch(const QString &text, bool before);
    void work();
    bool pass(TLine &line, bool fromClient);
    void close(TLine &line);

    QString m_connectionString;
    QByteArray m_host;
    int m_port = 0;
    int m_listener = -1;
    std::thread m_thread;
    std::mutex m_mutex;
    QByteArray m_watched;
    QByteArray m_refusal;
    bool m_cutBefore = false;
    QByteArray m_record;
    std::atomic<bool> m_records = false;
    std::atomic<bool> m_stop = false;
    std::atomic<bool> m_isCut = false;
    std::atomic<bool> m_isSilent = false;
    std::atomic<int> m_delay = 0;
    std::atomic<int> m_trickle = 0;
    std::atomic<int> m_trips = 0;
    std::atomic<int> m_cutAt = 0;
    std::atomic<qint64> m_fromServer = 0;
    std::atomic<qint64> m_toServer = 0;
};
