#pragma once

#include "support/Keys.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

/// A window with inputs, shown and active, as the screens have it.
class Form : public QWidget {
public:
    Form() : m_layout(new QVBoxLayout(this)) {}

    template <class Input>
    Input *add(Input *input)
    {
        m_layout->addWidget(input);
        return input;
    }
    void open()
    {
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    }

private:
    QVBoxLayout *m_layout;
};

/// Pastes a text with the key that does it.
inline void paste(QWidget *input, const QString &text)
{
    QApplication::clipboard()->setText(text);
    input->setFocus();
    Keys::press(input, Qt::Key_V, Qt::ControlModifier);
    QApplication::processEvents();
}

/// Counts how often an input tells that it changed.
template <class Input>
std::shared_ptr<int> countChanges(Input *input)
{
    auto count = std::make_shared<int>(0);
    QObject::connect(input, &Input::changed, input, [count] { ++*count; });
    return count;
}
