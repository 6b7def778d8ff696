#include "host/database/LineState.h"

using namespace Qt::Literals::StringLiterals;

QString PrivacyText(TLinePrivacy privacy)
{
    switch (privacy) {
    case TLinePrivacy::Checked:
        return u"رمزشده و تأییدشده"_s;
    case TLinePrivacy::Unchecked:
        return u"رمزشده، تأییدنشده"_s;
    default:
        return u"خوانا"_s;
    }
}

QString PrivacyTerm(TLinePrivacy privacy)
{
    switch (privacy) {
    case TLinePrivacy::Checked:
        return u"encrypted and checked"_s;
    case TLinePrivacy::Unchecked:
        return u"encrypted, unchecked"_s;
    default:
        return u"readable"_s;
    }
}
