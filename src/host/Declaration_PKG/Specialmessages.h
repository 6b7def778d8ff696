#pragma once

#include "host/Declaration_PKG/Confirmation_unt.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/database/DatabaseError.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <optional>

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
    QPointer<QObject> control; ///< the input concerned; gets the focus after a dialog
    QPointer<QObject> form; ///< the screen that tells it; null: the control's window, else the one in front
    int displayTime = 0;    ///< milliseconds, balloons only
    int width = 0;          ///< pixels, balloons only, 0 for the text's own
    QColor color;           ///< of the balloon, invalid for the ordinary one
};

/// Where all messages go. The suite's windows bring one that shows dialogs and balloons (SetUpHostWindows); tests set one
/// that records and answers.
class KETEBIONPAP_CORE TMessageService {
public:
    virtual ~TMessageService();
    virtual TAnswer show(const TMessage &message) = 0;
};
/// Messages of a program without windows: they are written to the error output, and every question gets the answer
/// that changes nothing.
class KETEBIONPAP_CORE TPlainMessages : public TMessageService {
public:
    TAnswer show(const TMessage &message) override;
};

/// The service in force; never null: the one that was set, else the usual one, else plain messages.
KETEBIONPAP_CORE TMessageService &MessageService();
/// Sets the service in force; null returns to the usual one. The caller keeps ownership.
KETEBIONPAP_CORE void SetMessageService(TMessageService *service);
/// Sets the usual service, once at the start. The caller keeps ownership.
KETEBIONPAP_CORE void SetUsualMessageService(TMessageService *service);

KETEBIONPAP_CORE void MsgRequiredField(const QString &caption, QObject *control, QObject *form);
/// `holder`: a sentence that names the record which has it, shown beside the message's own; no word of it.
KETEBIONPAP_CORE void MsgRepeatedField(const QString &caption, const QString &entity, QObject *control,
                                       QObject *form, const QString &holder = {});
KETEBIONPAP_CORE void MsgCodeNotAvailable(const QString &entity, QObject *control, QObject *form);
/// `record` names what goes, such as its code and title, below the question; `count`: when that is more than one row.
KETEBIONPAP_CORE bool MsgDeleteRow(const QString &record = {}, int count = 1);
/// A delete was refused. `reason`: the database's error, when that refused it; only a reference is told as one.
KETEBIONPAP_CORE void MsgHasSubRecords(const QString &entity,
                                       const std::optional<TDatabaseError> &reason = {});
KETEBIONPAP_CORE void MSGInUse(const QString &entity);
KETEBIONPAP_CORE void MsgNotEntered(const QString &caption);
KETEBIONPAP_CORE void NotZeroValue(const QString &caption, QObject *control);
KETEBIONPAP_CORE void NotSaveable(const QString &first, const QString &second, QObject *control);
/// What was picked is there already.
KETEBIONPAP_CORE void SelectBefore(const QString &caption, QObject *control);
/// A save succeeded; a balloon, so that the next record needs no extra key.
KETEBIONPAP_CORE void MSGCompeletedSuccessfully(const QString &action, const QString &text = {},
                                                QObject *control = nullptr);
/// A save failed. When the connection knows why (TConnection::lastError), its Persian sentence is added.
KETEBIONPAP_CORE void MSGFinishedNotSuccessfully(const QString &action, const QString &text = {});
/// A free warning. An empty detail is no word of the message.
KETEBIONPAP_CORE void ShowSmartMessage(const QString &text, const QString &detail, TMessageIconType icon);
/// A free question.
KETEBIONPAP_CORE TAnswer ShowSmartMessage(const QString &text, TMessageButtons buttons,
                                          TAnswer defaultAnswer);
/// A catalogued notification: a balloon for `displayTime` ms, a dialog when it is 0. `arguments` fill "%1"...
KETEBIONPAP_CORE void ShowSmartMessage(int number, QObject *control, QObject *form, int displayTime,
                                       const QStringList &arguments = {});
KETEBIONPAP_CORE void MakeGroup();

/// The host's own: the record was changed and not saved; save it (Yes), drop it (No), go on editing (Cancel)?
KETEBIONPAP_CORE TAnswer MsgNotSaved();
/// A database error that no caller handled: its Persian sentence, nothing lost.
KETEBIONPAP_CORE void MsgDatabaseError(const TDatabaseError &error);
/// The user lacks a right.
void MsgNoPermission(TSoftwarePart part, TPermission right);
/// A record that was to be opened, picked or deleted is no longer there. `record` names it where more than one may be
/// meant.
KETEBIONPAP_CORE void MsgRecordGone(const QString &record = {});
/// A text that its column does not keep whole.
struct TCutText {
    QString caption;
    int kept = 0; ///< characters
    QString lost; ///< what comes after them
};
/// Texts are longer than their columns. True: save them cut.
KETEBIONPAP_CORE bool MsgTextsCut(const QList<TCutText> &cuts);
/// What was just saved is not in the list behind, since a search or a group leaves it out; a balloon.
KETEBIONPAP_CORE void MsgSavedOutOfSight(const QString &record, QObject *form);
