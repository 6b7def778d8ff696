#include "app/Ask.h"

using namespace Qt::Literals::StringLiterals;

bool Ask(const QString &text, TAnswer defaultAnswer)
{
    TMessage message;
    message.operation = u"Ask"_s;
    message.shape = TMessageShape::Question;
    message.text = text;
    message.words = {text};
    message.icon = miQuestion;
    message.buttons = TMessageButtons::YesNo;
    message.defaultAnswer = defaultAnswer;
    return MessageService().show(message) == TAnswer::Yes;
}

void Tell(const QString &text, TMessageIconType icon)
{
    ShowSmartMessage(text, {}, icon);
}
