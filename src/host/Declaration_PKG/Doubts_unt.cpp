#include "host/Declaration_PKG/Doubts_unt.h"

#include "host/Declaration_PKG/Specialmessages.h"

using namespace Qt::Literals::StringLiterals;

bool MsgGoOnAnyway(const QStringList &doubts, const QString &question)
{
    TMessage message;
    message.operation = u"MsgGoOnAnyway"_s;
    message.shape = TMessageShape::Question;
    message.title = u"هشدار"_s;
    message.icon = miWarning;
    message.words = doubts;
    message.text = doubts.join(u'\n') + u'\n' + question;
    message.buttons = TMessageButtons::YesNo;
    message.defaultAnswer = TAnswer::No;
    return MessageService().show(message) == TAnswer::Yes;
}
