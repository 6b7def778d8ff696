#include "host/Message_ZLM/Message_ZLM.h"

#include "host/Declaration_PKG/Specialmessages.h"

#include <QWidget>

using namespace Qt::Literals::StringLiterals;

void ShowTooltipMessage(const QString &text, QWidget *control, int displayTime, int icon, const QColor &color,
                        int, int width)
{
    TMessage message;
    message.operation = u"ShowTooltipMessage"_s;
    message.shape = TMessageShape::Balloon;
    message.text = text;
    message.words = {text};
    message.icon = TMessageIconType(icon);
    message.control = control;
    message.displayTime = displayTime;
    message.color = color;
    message.width = width;
    MessageService().show(message);
}
