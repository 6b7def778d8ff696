#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <mutex>
#include <thread>

/// What listens where a server is expected, and never lets anybody in: it encrypts with a certificate or cannot, reads
/// the log-in and refuses it, or says nothing, or a byte now and then.
class TestListener {
public:
    enum Manner { Refuses, Silent, Trickles };
    struct TLogin {
        QString user;
        QString password;
        QString database;
    };

    /// `certificate`: a PEM file with certificate and key; empty: it does not encrypt.
    explicit TestListener(const QString &certificate = {}, Manner manner = Refuses,
                          int messageNumber = 18456);
    ~TestListener();
    TestListener(const TestListener &) = delete;

    int port() const { return m_port; }
    /// "Driver=FreeTDS;Server=127.0.0.1;Port=...;Database=d;UID=clerk;PWD=...;LoginTimeout=3".
    QString connectionString() const;
    /// How often somebody connected.
    int visits() const { return m_visits; }
    /// What the last one who got so far gave for his name.
    TLogin login();
    /// All bytes that came in, as they were on the line.
    QByteArray record();

    /// The bytes of a text on the line, where nothing is encrypted.
    static QByteArray onTheLine(const QString &text);

private:
    void work();
    void serve(int client);
    void answer(int client);

    QString m_certificate;
    Manner m_manner;
    int m_messageNumber;
    int m_listener = -1;
    int m_port = 0;
    std::atomic<int> m_visits = 0;
    std::atomic<bool> m_stop = false;
    std::mutex m_mutex;
    TLogin m_login;
    QByteArray m_record;
    std::thread m_thread;

    friend struct TestListenerLine;
};
