#pragma once

#include "app/Session.h"
#include "support/Keys.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

/// A test of the application's screens: a home of its own, a session on a new database, scripted messages, and an
/// administrator at work.
class Screens : public testing::Test {
protected:
    explicit Screens(TestDatabase::Place place = TestDatabase::AnyEngine);
    ~Screens() override;

    QString text(const QString &sql) { return session.connection().scalar(TStatement(sql)).toString(); }
    void run(const QString &sql) { session.connection().execute(TStatement(sql)); }
    /// Creates a user and gives the code.
    int user(const QString &name, const QString &password = "secret-b7qx2", bool admin = false);
    /// What was shown since the last call, the texts joined by line breaks.
    std::string told();

    QTemporaryDir home;
    TSession session;
    ScriptedMessages messages;

private:
    qsizetype m_told = 0;
};

/// What a session has only on a file, "suite.db" in the home: its backup, its name.
class ScreensOnAFile : public Screens {
protected:
    ScreensOnAFile();

    /// What is done in the dialog that asks for a backup's password; without it none is given.
    std::function<void(QWidget *dialog)> inNewSeal;

private:
    QTimer m_newSeals; // the dialog follows that of the file, which is the one that a test shows
};
