#include "host/Declaration_PKG/Doubts_unt.h"

#include "host/Declaration_PKG/Specialmessages.h"

bool MsgGoOnAnyway(const QStringList &doubts, const QString &question)
{
    TMessage message;
    message.operation = QStringLiteral("MsgGoOnAnyway");
    message.shape = TMessageShape::Question;
    message.title = QStringLiteral("هشدار");
    message.icon = miWarning;
    message.words = doubts;
    message.text = doubts.join(u'\n') + u'\n' + question;
    message.buttons = TMessageButtons::YesNo;
    message.defaultAnswer = TAnswer::No;
    return MessageService().show(message) == TAnswer::Yes;
}
