#pragma once

#include "host/Declaration_PKG/Specialmessages.h"

#include <QList>

#include <functional>

/// A message service that records every message and answers questions from a script.
class ScriptedMessages : public TMessageService {
public:
    ScriptedMessages();
    ~ScriptedMessages() override;
    TAnswer show(const TMessage &message) override;

    /// Answers of the coming questions, in order; a question without one is answered with No and noted as a fault of
    /// the test.
    void answer(std::initializer_list<TAnswer> answers);
    /// What was shown since the last call, each as "operation[:number](words joined by |)", such as
    /// "MsgRequiredField(عنوان)" or "ShowSmartMessage:10233()".
    QStringList take();
    const QList<TMessage> &all() const { return m_all; }
    TMessage last() const { return m_all.isEmpty() ? TMessage{} : m_all.last(); }
    /// Called from now on when a dialog or question comes up.
    void whenShown(std::function<void()> work) { m_whenShown = std::move(work); }
    int unansweredQuestions() const { return m_unanswered; }

private:
    QList<TMessage> m_all;
    qsizetype m_taken = 0;
    QList<TAnswer> m_answers;
    int m_unanswered = 0;
    std::function<void()> m_whenShown;
};
