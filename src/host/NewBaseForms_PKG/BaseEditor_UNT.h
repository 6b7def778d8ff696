#pragma once

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/NewBaseForms_PKG/BaseForm_UNT.h"

#include <QGridLayout>
#include <QVariant>

/// What record editors and detail-row editors share: inputs that mark the record as changed, save and exit
/// buttons, the unsaved question, and the hooks in their order.
class TBaseEditor : public TBaseForm {
    Q_OBJECT
public:
    TFormMode Mode() const { return m_mode; }
    bool IsSaved() const { return m_isSaved; }
    void SetIsSaved(bool saved);

    TSmartButton_ZLM *Save_BTN = nullptr;
    TSmartButton_ZLM *EXit_BTN = nullptr;

    /// Runs the save sequence: validate, save, mark as saved; then closes, stays or starts a new record, as the
    /// way of saving says. True when the record was saved. A database error is told to the user and leaves
    /// everything as typed.
    bool Save(TSaveMode way);

    int exec() override;

protected:
    explicit TBaseEditor(TFormMode mode);

    // The hooks, in the order of the editor's table of operations.
    virtual bool Validate() = 0;      ///< true when all is well; otherwise it has told the user and set the focus
    virtual void ClearRecord() = 0;   ///< inputs to the defaults of a new record
    virtual void LoadRecord() = 0;    ///< reads the record of Identifier()
    virtual void ShowRecord() = 0;    ///< shows the loaded record
    virtual bool SaveRecord() = 0;    ///< insert or update, then the success or failure message
    virtual void NewCode() = 0;       ///< computes and locks a new code, SetIdentifier
    virtual bool RecordExists() = 0;  ///< whether Identifier() is stored

    virtual void BeforeClose() {}     ///< runs once on every way of closing, after the base's own handling
    virtual QWidget *FirstInput() { return nullptr; } ///< gets the focus on opening; null: the first in tab order

    QVariant Identifier() const { return m_identifier; }
    void SetIdentifier(const QVariant &identifier) { m_identifier = identifier; }
    void SetMode(TFormMode mode) { m_mode = mode; }
    /// How F3 saves, and the button's caption ("ذخيره F3", as the screen writes it).
    void BuildFooter(const QString &saveCaption, const QString &exitCaption, TSaveMode way = svSaveClose);

    // Building inputs: a caption (byte for byte, its "&" names the key of the input) and an input side by side.
    /// Adds the input to the layout's next free row or at (row, column), names it, marks changes as unsaved.
    template <class Input>
    Input *AddInput(QGridLayout *layout, int row, int column, const QString &caption, const QString &objectName,
                    Input *input, const QString &suffix = {})
    {
        Place(layout, row, column, caption, objectName, input, suffix);
        connect(input, &Input::changed, this, [this] { SetIsSaved(false); });
        return input;
    }
    /// Focus to an input, turning to its page first.
    void FocusInput(QWidget *input);

    void closeEvent(QCloseEvent *event) override;
    void reject() override;
    void done(int result) override;
    bool HandleKey(QKeyEvent *event) override;

    /// Starts a record: new code, exists, clear; or exists, load, show. False: told the user, do not show.
    virtual bool Start();
    bool m_savedOnce = false; ///< a save succeeded: the result of closing is OK

private:
    void Place(QGridLayout *layout, int row, int column, const QString &caption, const QString &objectName,
               QWidget *input, const QString &suffix);
    bool confirmClose();
    TFormMode m_mode;
    QVariant m_identifier = 0;
    bool m_isSaved = true;
    bool m_closing = false;
};
