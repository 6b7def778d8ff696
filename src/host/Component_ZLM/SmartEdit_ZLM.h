#pragma once

#include "host/Component_ZLM/SmartInput.h"
#include "host/Export.h"

#include <QLineEdit>

#include <functional>
#include <memory>

/// A one-line input for text, whole numbers, numbers with decimals, or money (shown with grouping separators).
///
/// Number kinds take Persian, Arabic and Latin digits and pasted separators, keep Latin digits, are laid out left
/// to right, and are empty or a number at all times. Text keeps what is typed; line breaks become blanks.
class KETEBIONPAP_HOST TSmartEdit_ZLM : public QLineEdit, public TSmartInput {
    Q_OBJECT
public:
    enum Kind { Text, Integer, Number, Money };

    explicit TSmartEdit_ZLM(QWidget *parent = nullptr, Kind kind = Text, int maxLength = 50);
    ~TSmartEdit_ZLM() override;

    Kind kind() const;
    /// At most this many characters may be typed (an emoji is one); separators do not count. Pasted text is cut at
    /// it, with a hint; a pasted number that is too long is not taken at all, with a hint. What the program sets
    /// stays whole.
    void SetMaxLength(int characters);
    int MaxLength() const;
    /// Number kinds: smallest and largest value; a larger one is not taken while typing, a smaller typed one is
    /// raised when the focus leaves (an empty input stays empty). Without it: 0 to the kind's largest number.
    void SetRange(double minimum, double maximum);
    /// Number kinds: Up and Down step by one, and so do two small buttons in the input.
    void SetSpin(bool on);
    /// The same within bounds of their own, narrower than what may be typed.
    void SetSpinRange(double minimum, double maximum);
    /// Text that is a code or a number of something: when it is left, typed digits become Latin (LatinDigits), and
    /// blanks and marks at its ends go, too (PlainCode). What is stored is shown as it is.
    enum CodeForm { AsTyped, LatinDigits, PlainCode };
    void SetCodeForm(CodeForm form);
    /// Whether the user changed the text since the program set it.
    bool WasTyped() const;
    /// Brings what was typed into its final form, as leaving the input does: a function key saves without leaving it.
    void FinishTyping() { Settle(); }

    QVariant GetValue() const override; ///< Text: QString; Integer: int; Number, Money: double; empty: null
    void SetValue(const QVariant &value) override;
    QString GetText() const override;
    void SetText(const QString &text) override;
    bool IsEmpty() const override;
    bool IsValid() override;
    QWidget *Widget() override { return this; }

    int asInteger() const { return GetValue().toInt(); }
    double asFloat() const { return GetValue().toDouble(); }

    /// The same as SetText: the program's text, not typed.
    void setText(const QString &text) { SetText(text); }

Q_SIGNALS:
    void changed();
    void exited();

protected:
    /// Brings a typed text and its caret into the input's form; false refuses the change.
    using TypingRule = std::function<bool(QString &text, int &caret)>;
    /// For inputs of a fixed form, in place of the kind's own rule. They are laid out left to right.
    void SetTypingRule(TypingRule rule);
    /// Runs when the focus leaves the input and when it is asked for validity: brings what was typed into its final
    /// form.
    virtual void Settle();
    /// Puts a text into the input as it stands, as typed by nobody.
    void PutText(const QString &text);
    /// Shows the input as holding no valid value.
    void MarkWrong(bool wrong);
    void SetLeftToRight(bool on);
    /// Tells the user at the input, for some seconds, without stopping work.
    void Hint(const QString &text);

    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void stepBy(int step);
    class SpinButtons;
    struct Private;
    std::unique_ptr<Private> d;
};

/// While a share of more than 100 percent stands in the input, its third character is removed, so that typing 150
/// leaves 15. `caretAtEnd`: the caret goes to the end, otherwise to the old length minus 1.
/// Call it from changed().
KETEBIONPAP_HOST void GuardPercent(TSmartEdit_ZLM *edit, bool caretAtEnd);
