#include "support/ScriptedMessages.h"

#include <gtest/gtest.h>

ScriptedMessages::ScriptedMessages()
{
    SetMessageService(this);
}

ScriptedMessages::~ScriptedMessages()
{
    SetMessageService(nullptr);
}

TAnswer ScriptedMessages::show(const TMessage &message)
{
    m_all.append(message);
    if (m_whenShown && message.shape != TMessageShape::Balloon)
        m_whenShown();
    if (message.shape != TMessageShape::Question)
        return TAnswer::Ok;
    if (m_answers.isEmpty()) {
        ++m_unanswered;
        ADD_FAILURE() << "nobody answers the question " << message.operation.toStdString() << ": "
                      << message.text.toStdString();
        return TAnswer::No;
    }
    return m_answers.takeFirst();
}

void ScriptedMessages::answer(std::initializer_list<TAnswer> answers)
{
    m_answers.append(QList<TAnswer>(answers));
}

QStringList ScriptedMessages::take()
{
    QStringList shown;
    for (; m_taken < m_all.size(); ++m_taken) {
        const TMessage &message = m_all[m_taken];
        const QString number = message.number ? u':' + QString::number(message.number) : QString();
        shown << message.operation + number + u'(' + message.words.join(u'|') + u')';
    }
    return shown;
}
