#include "app/Ask.h"

bool Ask(const QString &text, TAnswer defaultAnswer)
{
    TMessage message;
    message.operation = QStringLiteral("Ask");
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
