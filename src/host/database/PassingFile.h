#pragma once

#include <QString>

/// A database file that is needed for a while and goes when this goes, with what SQLite and the queue laid beside it.
/// It is private to the user, and locked, so that what a killed program left can be told from what a running one has.
class TPassingFile {
public:
    /// Creates it empty; what a killed program left under that name goes. Throws TDatabaseError: Locked when a running
    /// program has it, or why it cannot be created.
    explicit TPassingFile(const QString &name);
    ~TPassingFile();
    TPassingFile(const TPassingFile &) = delete;
    TPassingFile &operator=(const TPassingFile &) = delete;
    const QString &name() const { return m_name; }

    /// Takes away what a killed program left under that name, if anything. Throws nothing.
    static void removeLeft(const QString &name);

private:
    QString m_name;
    int m_file = -1;
};
