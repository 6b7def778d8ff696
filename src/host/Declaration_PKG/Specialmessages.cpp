#include "host/Declaration_PKG/Specialmessages.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Rights_unt.h"

#include <cstdio>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

TMessageService *&serviceInForce()
{
    static TMessageService *service = nullptr;
    return service;
}

TMessageService *&usualService()
{
    static TMessageService *service = nullptr;
    return service;
}

const int successTime = 2000; // ms
const int hiddenTime = 6000;

QString title(TMessageIconType icon)
{
    switch (icon) {
    case miQuestion:
        return u"پرسش"_s;
    case miError:
        return u"خطا"_s;
    case miWarning:
        return u"هشدار"_s;
    case miInformation:
        break;
    }
    return u"پیام"_s;
}

TMessage message(const char *operation, TMessageIconType icon, const QString &text,
                 const QStringList &words = {})
{
    TMessage result;
    result.operation = QString::fromLatin1(operation);
    result.icon = icon;
    result.title = title(icon);
    result.words = words;
    result.text = MessageCatalogue::fill(text, words);
    return result;
}

void at(TMessage &message, QObject *control, QObject *form = nullptr)
{
    message.control = control;
    message.form = form;
}

void asQuestion(TMessage &message, TMessageButtons buttons, TAnswer defaultAnswer)
{
    message.shape = TMessageShape::Question;
    message.buttons = buttons;
    message.defaultAnswer = defaultAnswer;
}

void warn(const char *operation, const QString &text, const QStringList &words, QObject *control = nullptr,
          QObject *form = nullptr)
{
    TMessage result = message(operation, miWarning, text, words);
    at(result, control, form);
    MessageService().show(result);
}

TMessage numbered(int number, const QStringList &arguments = {})
{
    const MessageCatalogue::TEntry *entry = MessageCatalogue::find(number);
    TMessage result = message("ShowSmartMessage", entry ? entry->icon : miWarning,
                              entry ? entry->text : u"پیام شماره %1"_s.arg(number), arguments);
    result.number = number;
    return result;
}

/// A caption as the object of a sentence. Some bring their "را" along.
QString asObject(const QString &caption)
{
    const QString particle = u" را"_s;
    const QString words = caption.trimmed() + u' ';
    return words.contains(particle + u' ') ? words.trimmed() : words.trimmed() + particle;
}

} // namespace

TMessageService::~TMessageService() = default;

TAnswer TPlainMessages::show(const TMessage &message)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(message.text));
    switch (message.buttons) {
    case TMessageButtons::YesNo:
        return TAnswer::No;
    case TMessageButtons::YesNoCancel:
        return TAnswer::Cancel;
    case TMessageButtons::Ok:
        break;
    }
    return TAnswer::Ok;
}

TMessageService &MessageService()
{
    static TPlainMessages plain;
    if (serviceInForce())
        return *serviceInForce();
    return usualService() ? *usualService() : plain;
}

void SetUsualMessageService(TMessageService *service)
{
    usualService() = service;
}

void SetMessageService(TMessageService *service)
{
    serviceInForce() = service;
}

void MsgRequiredField(const QString &caption, QObject *control, QObject *form)
{
    TMessage result = message("MsgRequiredField", miWarning, {}, {caption});
    result.text = MessageCatalogue::fill(u"لطفا %1 وارد کنید."_s, {asObject(caption)});
    at(result, control, form);
    MessageService().show(result);
}

void MsgRepeatedField(const QString &caption, const QString &entity, QObject *control, QObject *form,
                      const QString &holder)
{
    // The second word names now the entity, now a second field: the sentence must bear both.
    TMessage result =
        message("MsgRepeatedField", miWarning,
                entity.trimmed().isEmpty() ? u"این %1 قبلا ثبت شده است و نمی تواند تکراری باشد."_s
                                           : u"تکراری است و قبلا ثبت شده است: %1 - %2"_s,
                {caption, entity});
    if (!holder.isEmpty())
        result.text += u'\n' + holder;
    at(result, control, form);
    MessageService().show(result);
}

void MsgCodeNotAvailable(const QString &entity, QObject *control, QObject *form)
{
    warn("MsgCodeNotAvailable", u"%1 با این کد وجود ندارد."_s, {entity}, control, form);
}

bool MsgDeleteRow(const QString &record, int count)
{
    TMessage result = message("MsgDeleteRow", miQuestion, u"آیا از حذف این سطر اطمینان دارید؟"_s);
    const QString named = MessageCatalogue::fill(u"%1"_s, {record});
    if (count > 1)
        result.text += u"\n%1 سطر: "_s.arg(count) + named;
    else if (!record.isEmpty())
        result.text += u'\n' + named;
    asQuestion(result, TMessageButtons::YesNo, TAnswer::No);
    return MessageService().show(result) == TAnswer::Yes;
}

void MsgHasSubRecords(const QString &entity, const std::optional<TDatabaseError> &reason)
{
    if (reason && reason->fault() != TFault::Refused) {
        qWarning("%s", reason->what());
        TMessage result = message("MsgHasSubRecords", miError, u"این %1 حذف نشد."_s, {entity});
        result.text += u'\n' + reason->userText();
        MessageService().show(result);
        return;
    }
    warn("MsgHasSubRecords", u"این %1 در جای دیگری استفاده شده است و نمی توان آن را حذف کرد."_s, {entity});
}

void MSGInUse(const QString &entity)
{
    warn("MSGInUse", u"این %1 هم اکنون برای ویرایش باز است. پس از بسته شدن آن دوباره تلاش کنید."_s, {entity});
}

void MsgNotEntered(const QString &caption)
{
    warn("MsgNotEntered", u"%1 وارد نشده است."_s, {caption});
}

void NotZeroValue(const QString &caption, QObject *control)
{
    warn("NotZeroValue", u"%1 نمی تواند صفر باشد."_s, {caption}, control);
}

void NotSaveable(const QString &first, const QString &second, QObject *control)
{
    warn("NotSaveable", u"در %1 نمی توان %2 ذخیره کرد."_s, {first, second}, control);
}

void SelectBefore(const QString &caption, QObject *control)
{
    warn("SelectBefore", u"این %1 قبلا انتخاب شده است."_s, {caption}, control);
}

void MSGCompeletedSuccessfully(const QString &action, const QString &text, QObject *control)
{
    TMessage result =
        message("MSGCompeletedSuccessfully", miInformation, u"%1 با موفقیت انجام شد."_s, {action});
    if (!text.isEmpty()) {
        result.words << text;
        result.text += u'\n' + text;
    }
    result.shape = TMessageShape::Balloon;
    result.displayTime = successTime;
    at(result, control);
    MessageService().show(result);
}

void MSGFinishedNotSuccessfully(const QString &action, const QString &text)
{
    TMessage result = message("MSGFinishedNotSuccessfully", miError, u"%1 انجام نشد."_s, {action});
    if (!text.isEmpty())
        result.words << text;
    // Some callers name the action in both places.
    if (text.trimmed() != action.trimmed() && !text.isEmpty())
        result.text += u'\n' + text;
    if (DM.ADOConnection1 && DM.ADOConnection1->lastError())
        result.text += u'\n' + DM.ADOConnection1->lastError()->userText();
    MessageService().show(result);
}

void ShowSmartMessage(const QString &text, const QString &detail, TMessageIconType icon)
{
    TMessage result = message("ShowSmartMessage", icon, {}, {text});
    result.text = text;
    if (!detail.isEmpty()) {
        result.words << detail;
        result.text += u'\n' + detail;
    }
    MessageService().show(result);
}

TAnswer ShowSmartMessage(const QString &text, TMessageButtons buttons, TAnswer defaultAnswer)
{
    TMessage result = message("ShowSmartMessage", miQuestion, {}, {text});
    result.text = text;
    asQuestion(result, buttons, defaultAnswer);
    return MessageService().show(result);
}

void ShowSmartMessage(int number, QObject *control, QObject *form, int displayTime,
                      const QStringList &arguments)
{
    TMessage result = numbered(number, arguments);
    result.displayTime = displayTime;
    result.shape = displayTime > 0 ? TMessageShape::Balloon : TMessageShape::Dialog;
    at(result, control, form);
    MessageService().show(result);
}

TAnswer ShowSmartMessage(int number, TMessageButtons buttons, TAnswer defaultAnswer)
{
    TMessage result = numbered(number);
    asQuestion(result, buttons, defaultAnswer);
    return MessageService().show(result);
}

void MakeGroup()
{
    warn("MakeGroup", u"هنوز گروهی ساخته نشده است. لطفا نخست یک گروه بسازید."_s, {});
}

TAnswer MsgNotSaved()
{
    TMessage result =
        message("MsgNotSaved", miQuestion, u"تغییرات ذخیره نشده است. آیا می خواهید آنها را ذخیره کنید؟"_s);
    asQuestion(result, TMessageButtons::YesNoCancel, TAnswer::Yes);
    return MessageService().show(result);
}

void MsgDatabaseError(const TDatabaseError &error)
{
    qWarning("%s", error.what());
    TMessage result = message("MsgDatabaseError", miError, {});
    result.text = error.userText();
    MessageService().show(result);
}

void MsgNoPermission(TSoftwarePart part, TPermission right)
{
    TMessage result = message("MsgNoPermission", miWarning, {});
    result.text = MessageCatalogue::fill(u"شما مجوز «%1» در بخش «%2» را ندارید."_s,
                                         {PermissionName(right), SoftwarePartName(part)});
    MessageService().show(result);
}

void MsgRecordGone(const QString &record)
{
    TMessage result = message("MsgRecordGone", miWarning,
                              u"این رکورد دیگر وجود ندارد. شاید کاربر دیگری آن را حذف کرده باشد."_s);
    if (!record.isEmpty()) {
        result.words << record;
        result.text += u'\n' + MessageCatalogue::fill(u"%1"_s, {record});
    }
    MessageService().show(result);
}

bool MsgTextsCut(const QList<TCutText> &cuts)
{
    TMessage result = message("MsgTextsCut", miQuestion, {});
    for (const TCutText &cut : cuts) {
        result.words << cut.caption;
        result.text += MessageCatalogue::fill(
            u"از «%1» تنها %2 نویسه نخست ذخیره می شود و این بخش از دست می رود: «%3»\n"_s,
            {cut.caption, QString::number(cut.kept), cut.lost});
    }
    result.text += u"آیا به همین صورت ذخیره شود؟"_s;
    asQuestion(result, TMessageButtons::YesNo, TAnswer::No);
    return MessageService().show(result) == TAnswer::Yes;
}

void MsgSavedOutOfSight(const QString &record, QObject *form)
{
    TMessage result = message("MsgSavedOutOfSight", miInformation,
                              u"رکورد %1 ذخیره شد، ولی جستجو یا گروهی که اکنون برگزیده است آن را نشان نمی "
                              "دهد. برای دیدن آن جستجو را پاک کنید یا گروه دیگری برگزینید."_s,
                              {record});
    result.shape = TMessageShape::Balloon;
    result.displayTime = hiddenTime;
    at(result, nullptr, form);
    MessageService().show(result);
}
