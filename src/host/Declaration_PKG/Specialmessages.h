#pragma once

#include "host/Declaration_PKG/Confirmation_unt.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/database/DatabaseError.h"

#include <QColor>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

/// How a message is shown.
enum class TMessageShape {
    Dialog,   ///< stops until the user closes it
    Question, ///< stops until the user answers
    Balloon   ///< stands beside the input and goes by itself; never stops work
};

/// One message on its way to the user.
struct TMessage {
    QString operation; ///< the operation that raised it, such as "MsgRequiredField"
    int number = 0;    ///< catalogue number, 0 where there is none
    TMessageShape shape = TMessageShape::Dialog;
    QString title;
    QString text;      ///< the whole Persian sentence, words filled in
    QStringList words; ///< the captions and texts that the caller passed, byte for byte
    TMessageIconType icon = miInformation;
    TMessageButtons buttons = TMessageButtons::Ok;
    TAnswer defaultAnswer = TAnswer::Ok;
    QPointer<QWidget> control; ///< the input concerned; gets the focus after a dialog
    QPointer<QWidget> form;
    int displayTime = 0; ///< milliseconds, balloons only
    int width = 0;       ///< pixels, balloons only, 0 for the text's own
    QColor color;        ///< of the balloon, invalid for the ordinary one
};

/// Where all messages go. The program's own shows dialogs and balloons; tests set one that records and answers.
class TMessageService {
public:
    virtual ~TMessageService();
    virtual TAnswer show(const TMessage &message) = 0;
};
/// The service in force; never null (dialogs and balloons unless another one was set).
TMessageService &MessageService();
/// Sets the service in force; null returns to dialogs and balloons. The caller keeps ownership.
void SetMessageService(TMessageService *service);

void MsgRequiredField(const QString &caption, QWidget *control, QWidget *form);
/// `holder`: a sentence that names the record which has it, shown beside the message's own; no word of it.
void MsgRepeatedField(const QString &caption, const QString &entity, QWidget *control, QWidget *form,
                      const QString &holder = {});
void MsgCodeNotAvailable(const QString &entity, QWidget *control, QWidget *form);
bool MsgDeleteRow();
void MsgHasSubRecords(const QString &entity);
void MSGInUse(const QString &entity);
void MsgNotEntered(const QString &caption);
void NotZeroValue(const QString &caption, QWidget *control);
void NotSaveable(const QString &first, const QString &second, QWidget *control);
/// What was picked is there already.
void SelectBefore(const QString &caption, QWidget *control);
/// A save succeeded; a balloon, so that the next record needs no extra key.
void MSGCompeletedSuccessfully(const QString &action, const QString &text = {}, QWidget *control = nullptr);
/// A save failed. When the connection knows why (TConnection::lastError), its Persian sentence is added.
void MSGFinishedNotSuccessfully(const QString &action, const QString &text = {});
/// A free warning. An empty detail is no word of the message.
void ShowSmartMessage(const QString &text, const QString &detail, TMessageIconType icon);
/// A catalogued notification: a balloon for `displayTime` ms, a dialog when it is 0. `arguments` fill "%1"...
void ShowSmartMessage(int number, QWidget *control, QWidget *form, int displayTime,
                      const QStringList &arguments = {});
void MakeGroup();

/// The host's own: the record was changed and not saved; save it (Yes), drop it (No), go on editing (Cancel)?
TAnswer MsgNotSaved();
/// A database error that no caller handled: its Persian sentence, nothing lost.
void MsgDatabaseError(const TDatabaseError &error);
/// The user lacks a right.
void MsgNoPermission(TSoftwarePart part, TPermission right);
/// A record that was to be opened is no longer there.
void MsgRecordGone();
