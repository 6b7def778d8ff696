#pragma once

#include "host/Component_ZLM/SmartInput.h"

#include <QLineEdit>

/// A one-line input for text, whole numbers, numbers with decimals, or money (shown with grouping separators).
///
/// Number kinds take Persian, Arabic and Latin digits and pasted separators, keep Latin digits, are laid out left
/// to right, and are empty or a number at all times. Text keeps what is typed; line breaks become blanks.
class TSmartEdit_ZLM : public QLineEdit, public TSmartInput {
    Q_OBJECT
public:
    enum Kind { Text, Integer, Number, Money };

    explicit TSmartEdit_ZLM(QWidget *parent = nullptr, Kind kind = Text, int maxLength = 50);

    Kind kind() const;
    /// At most this many characters; separators do not count.
    void SetMaxLength(int characters);
    int MaxLength() const;
    /// Number kinds: smallest and largest value; a larger one is not taken while typing, a smaller one is raised
    /// when the focus leaves (an empty input stays empty).
    void SetRange(double minimum, double maximum);
    /// Number kinds: Up and Down step by one.
    void SetSpin(bool on);

    QVariant GetValue() const override; ///< Text: QString; Integer: int; Number, Money: double; empty: null
    void SetValue(const QVariant &value) override;
    QString GetText() const override;
    void SetText(const QString &text) override;
    bool IsEmpty() const override;
    bool IsValid() override;
    QWidget *Widget() override { return this; }

    int asInteger() const { return GetValue().toInt(); }
    double asFloat() const { return GetValue().toDouble(); }

Q_SIGNALS:
    void changed();
    void exited();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;

public:
    ~TSmartEdit_ZLM() override;
};

/// While a share of more than 100 percent stands in the input, its third character is removed, so that typing 150
/// leaves 15. `caretAtEnd`: the caret goes to the end, otherwise to the old length minus 1.
/// Call it from changed().
void GuardPercent(TSmartEdit_ZLM *edit, bool caretAtEnd);
