#pragma once

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"
#include "host/NewBaseForms_PKG/KeptTexts_UNT.h"
#include "host/database/RecordRules.h"

#include <QGridLayout>
#include <QHash>
#include <QPointer>

#include <functional>

class QLabel;

/// A screen of inputs: placed with their captions, in tab order, on pages; checked when they are left and before a save.
class KETEBIONPAP_HOST TInputForm : public TBaseForm {
    Q_OBJECT
protected:
    /// Adds the input to the layout's next free row (row -1) or at (row, column), names it, tells InputChanged of
    /// changes. A column is a pair of caption (byte for byte, its "&" names the key of the input) and input.
    template <class Input>
    Input *AddInput(QGridLayout *layout, int row, int column, const QString &caption,
                    const QString &objectName, Input *input, const QString &suffix = {})
    {
        Place(layout, row, column, caption, objectName, input, suffix);
        connect(input, &Input::changed, this, &TInputForm::InputChanged);
        return input;
    }
    Q_SLOT virtual void InputChanged() = 0;
    /// The input or another widget with a name; null when there is none.
    template <class Widget>
    Widget *Input(const char *name) const
    {
        return findChild<Widget *>(QString::fromLatin1(name));
    }
    /// AddInput and KeepIn for all fields of a record whose inputs stand on a page and are made, by row and column.
    /// `column` keeps their texts where that is not the fields' own.
    template <class Record>
    void AddFields(QGridLayout *layout, std::span<const TField<Record>> fields, const QString &table,
                   int page = 0, const char *column = nullptr)
    {
        for (const TField<Record> *field : Fields::onPage(fields, page))
            PlaceField(layout, field->input, table,
                       std::holds_alternative<QString Record::*>(field->member)
                           ? (column ? column : field->column)
                           : nullptr);
    }
    /// Whether what is typed keeps a rule; when it does not, the user is told, and the focus goes to the input of the
    /// rule's field. For fields without one the screen names it.
    template <class Record, class Subject>
    [[nodiscard]] bool Keeps(const TRule<Subject> &rule, std::span<const TField<Record>> fields,
                             const Subject &subject, QWidget *otherwise = nullptr)
    {
        const TField<Record> *field = Fields::ofColumn(fields, rule.column);
        auto *input = field && field->input.name ? Input<QWidget>(field->input.name) : otherwise;
        if (rule.message == TRuleMessage::WrongForm)
            return KeepsForm(input); // brings what is being typed into its form, too
        const auto complaint = rule.complaint(subject);
        if (complaint)
            TellComplaint(*complaint, input);
        else if (auto *typed = dynamic_cast<TSmartInput *>(input);
                 typed && rule.message == TRuleMessage::Required)
            RefuseBlanks(typed, rule.firstWord());
        return !complaint;
    }
    /// Tells the user what a rule has against what is typed, and gives the focus to the input.
    void TellComplaint(const TComplaint &complaint, QWidget *input);
    /// Names the table's columns that keep what is typed into these inputs. A text that is longer than its column is told
    /// behind all that a save checks, and the user may go back to it.
    void KeepIn(const QString &table,
                std::initializer_list<std::pair<TSmartEdit_ZLM *, const char *>> inputsAndColumns);
    /// The label that AddInput put beside an input; null when its caption is empty.
    QLabel *CaptionOf(QWidget *input) const { return m_captions.value(input); }
    /// Gives a widget that AddInput does not know (a grid, a selector) its place in the tab order: behind an input, or
    /// behind all inputs added so far.
    void AddTabStop(QWidget *widget, QWidget *behind = nullptr)
    {
        m_inputs.insert(behind ? m_inputs.indexOf(QPointer<QWidget>(behind)) + 1 : m_inputs.size(), widget);
    }
    /// Puts a check box before the caption of an input that counts only while the box is ticked, and before the input
    /// in the tab order. What ticking does is the screen's.
    TSmartCheckBox_ZLM *AddTickBox(QWidget *input, const QString &objectName);
    /// Puts a widget beside an input, behind its suffix: a title label, a rounding unit.
    void AddBeside(QWidget *input, QWidget *widget);
    /// A page with a grid layout; a framed group with one.
    static QGridLayout *AddPage(QTabWidget *pages, const QString &caption, const QString &objectName);
    static QGridLayout *AddGroup(QLayout *into, const QString &caption, const QString &objectName);
    /// A page that is shown only to users with a right on a part; the others get the page before it back.
    /// Uses the tab widget given to SetPages.
    void GuardPage(int page, TSoftwarePart part, TPermission right);

    virtual QWidget *FirstInput()
    {
        return nullptr;
    } ///< gets the focus on opening; null: the first in tab order
    /// Focus to an input, turning to its page first.
    void FocusInput(QWidget *input);
    void FocusFirst();
    void OrderTabs();
    /// A page that is turned to gives the focus to its first input again.
    void ForgetPagesFocus();

    /// Whether an input holds a value of its kind; when it does not, its page, the focus, and the balloon beside it.
    [[nodiscard]] bool CheckInput(TSmartInput *input);
    /// Whether an input holds anything; when it does not, MsgRequiredField with this word, its page and the focus.
    /// Blanks are a text, and stored ones stay; but typed ones alone are refused with the same message behind all
    /// else that a save checks.
    [[nodiscard]] bool RequireInput(TSmartInput *input, const QString &word);
    /// The latter, for a screen that asks for the input in its own way.
    void RefuseBlanks(TSmartInput *input, const QString &word);
    /// Before a save's checks: what is still being typed counts as typed.
    void BeginChecks();
    /// Behind them: blanks alone, and texts that their columns would cut. False: the user was told.
    [[nodiscard]] bool TextsMayStand();

    /// Registers the check that runs when an input is left; the user is told about its errors.
    void CheckOnLeaving(TSmartEdit_ZLM *input, const std::function<void()> &check);
    /// Runs that check before a save, unless it ran for what stands there now; errors pass. An input that the user is
    /// at is checked in any case, whether the screen is the active window or a question was in front of it. True: it ran.
    bool CheckTyped(TSmartEdit_ZLM *input);

private:
    void Place(QGridLayout *layout, int row, int column, const QString &caption, const QString &objectName,
               QWidget *input, const QString &suffix);
    void PlaceField(QGridLayout *layout, const TFieldInput &field, const QString &table, const char *column);
    bool KeepsForm(QWidget *input);
    void runLeavingCheck(TSmartEdit_ZLM *input);
    QList<QPointer<QWidget>> m_inputs;
    QHash<QWidget *, QLabel *> m_captions;
    struct TBlank {
        TSmartInput *input;
        QString word;
    };
    QList<TBlank> m_blanks; ///< what the checks under way found
    struct TLeavingCheck {
        std::function<void()> run;
        QString seen; ///< the text that it ran for last
    };
    QHash<TSmartEdit_ZLM *, TLeavingCheck> m_leavingChecks;
    TKeptTexts m_keptTexts;
    struct TPageGuard {
        int page;
        TSoftwarePart part;
        TPermission right;
    };
    QList<TPageGuard> m_guards;
    int m_lastPage = 0;
};
