#pragma once

#include "Desk.h"

#include "support/TestDatabase.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

/// What a clerk does with the real program, its real dialogs and a real keyboard. The test looks at the windows from
/// outside, and at the database.
class Story : public testing::Test {
protected:
    Story();
    ~Story() override;

    /// Starts the program on one of the module's entries and waits for its window.
    void open(const QString &entry, const QString &title);
    /// Waits until another window than the one so far has the keyboard, whose title begins so; it is the one so far then.
    bool comes(const QString &title);
    void press(const QStringList &keys) { desk.press(keys); }
    void type(const QString &latinText) { desk.type(latinText); }
    /// Waits until a statement answers a text.
    bool becomes(const QString &sql, const QString &value);
    /// Waits until the program ends by itself; its exit code, -1 when it does not. Its output stands in `out`.
    int ends();

    TestDatabase db{TestDatabase::FileAlways};
    Desk &desk = Desk::instance();
    QString out;

private:
    QTemporaryDir m_home;
    QProcess m_program;
    qulonglong m_window = 0;
};
