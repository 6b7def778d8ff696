#include "host/NewBaseForms_PKG/HostWindows_UNT.h"

#include "host/Declaration_PKG/Dynamic_method_declare_unt.h"
#include "host/Message_ZLM/DesktopMessages.h"
#include "host/Message_ZLM/WindowWait.h"
#include "host/NewBaseForms_PKG/GroupPickers_UNT.h"

void SetUpHostWindows()
{
    static TDesktopMessages messages;
    static TWindowWait wait;
    SetUsualMessageService(&messages);
    SetUsualAnswerWait(&wait);
    SetUsualEntityPicker(cspPerson, [](const QString &text) { return Select_GroupList(cspPerson, text); });
}
