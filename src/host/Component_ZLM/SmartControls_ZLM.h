#pragma once

#include "host/Component_ZLM/SmartEdit_ZLM.h"
#include "host/Export.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

/// An input with a button inside (also Alt+Down or F2) that offers values to pick from.
class KETEBIONPAP_HOST TSmartPickEdit_ZLM : public TSmartEdit_ZLM {
    Q_OBJECT
public:
    TSmartPickEdit_ZLM(QWidget *parent, Kind kind, int maxLength);
    QToolButton *PickButton() const { return m_button; }

Q_SIGNALS:
    void pick();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QToolButton *m_button;
};

/// A code with a pick button: the text of TSmartEdit_ZLM, of kind Integer.
class KETEBIONPAP_HOST TSmartButtonEdit_ZLM : public TSmartPickEdit_ZLM {
    Q_OBJECT
public:
    explicit TSmartButtonEdit_ZLM(QWidget *parent = nullptr, int maxLength = 6);
};

/// A Persian date, typed with or without slashes or picked from a Persian calendar (button, Alt+Down or F2).
/// May be empty. Stores "1404/01/05". A date that does not exist stays as typed and is not valid.
class KETEBIONPAP_HOST TSmartDateEdit_ZLM : public TSmartPickEdit_ZLM {
    Q_OBJECT
public:
    explicit TSmartDateEdit_ZLM(QWidget *parent = nullptr);
    /// Empty text is no value (null); otherwise the date's text.
    QVariant GetValue() const override;
    QString GetText() const override;
    void SetText(const QString &text) override;
    /// Empty is valid. A wrong date gives notification 10 at the input and is not.
    bool IsValid() override;
    int WrongNote() const override;
    /// The same for a date that must be there: empty is not valid either.
    bool IsDate();

protected:
    void Settle() override;

private:
    void openCalendar();
};

/// A text of a fixed form. Digits of all three scripts are taken and kept as Latin ones.
class KETEBIONPAP_HOST TSmartMaskEdit_ZLM : public TSmartEdit_ZLM {
    Q_OBJECT
public:
    enum Mask { NationalCode, IdNumber, Telephone, PostCode, Email };
    explicit TSmartMaskEdit_ZLM(QWidget *parent, Mask mask, int maxLength);
    /// Empty is valid. A wrong one gives the mask's notification at the input (10310 for a national code).
    bool IsValid() override;
    int WrongNote() const override;

private:
    Mask m_mask;
};

/// A time of day of five characters, "08:00"; 00:00 to 23:59, or empty. Typed with or without the colon. A time
/// that does not exist stays as typed and is not valid.
class KETEBIONPAP_HOST TSmartTime_ZLM : public TSmartEdit_ZLM {
    Q_OBJECT
public:
    explicit TSmartTime_ZLM(QWidget *parent = nullptr);
    QString GetText() const override;
    void SetText(const QString &text) override;
    bool IsValid() override;
    int WrongNote() const override;

protected:
    void Settle() override;
};

class KETEBIONPAP_HOST TSmartSpinEdit_ZLM : public QSpinBox, public TSmartInput {
    Q_OBJECT
public:
    TSmartSpinEdit_ZLM(QWidget *parent, int minimum, int maximum);
    QVariant GetValue() const override { return value(); }
    void SetValue(const QVariant &value) override { setValue(value.toInt()); }
    QString GetText() const override { return QString::number(value()); }
    void SetText(const QString &text) override { setValue(text.toInt()); }
    bool IsEmpty() const override { return false; }
    bool IsValid() override { return true; }
    QWidget *Widget() override { return this; }

Q_SIGNALS:
    void changed();

protected:
    /// Persian and Arabic digits count.
    QValidator::State validate(QString &input, int &position) const override;
    int valueFromText(const QString &text) const override;
    void wheelEvent(QWheelEvent *event) override; ///< a passing wheel does not turn it
};

class KETEBIONPAP_HOST TSmartCheckBox_ZLM : public QCheckBox, public TSmartInput {
    Q_OBJECT
public:
    explicit TSmartCheckBox_ZLM(const QString &caption, QWidget *parent = nullptr);
    QVariant GetValue() const override { return isChecked(); }
    void SetValue(const QVariant &value) override { setChecked(value.toBool()); }
    QString GetText() const override { return isChecked() ? u"1"_s : u"0"_s; }
    void SetText(const QString &text) override { setChecked(text == "1"_L1); }
    bool IsEmpty() const override { return false; }
    bool IsValid() override { return true; }
    QWidget *Widget() override { return this; }

Q_SIGNALS:
    void changed();
};

/// A drop-down list, searched by typing an item's beginning (both forms of yeh and kaf are one). Items may carry a code; the value is the position, counted from 0 (-1: none).
class KETEBIONPAP_HOST TSmartComboBox_ZLM : public QComboBox, public TSmartInput {
    Q_OBJECT
public:
    explicit TSmartComboBox_ZLM(QWidget *parent = nullptr, const QStringList &items = {});
    void AddItem(const QString &text, int code);
    int Code() const;       ///< code of the chosen item, 0 when there is none
    bool SetCode(int code); ///< chooses the item with the code; false: not there, choice unchanged
    QVariant GetValue() const override { return currentIndex(); }
    void SetValue(const QVariant &value) override { setCurrentIndex(value.toInt()); }
    QString GetText() const override { return currentText(); }
    void SetText(const QString &text) override { setCurrentText(text); }
    bool IsEmpty() const override { return currentIndex() < 0; }
    bool IsValid() override { return true; }
    QWidget *Widget() override { return this; }

Q_SIGNALS:
    void changed();

protected:
    void keyPressEvent(QKeyEvent *event) override; ///< function keys are the screen's
    void wheelEvent(QWheelEvent *event) override;  ///< a closed list does not turn under the wheel
};

/// What an editor's save button does.
enum TSaveMode { svNone = 0, svSave = 1, svSaveClose = 2, svSaveNew = 3 };

/// A button with a key in its caption. The save button of an editor is split: its menu offers the other ways of
/// saving. Enter and Space press it while it has the focus; a mouse click leaves the focus where it is.
class KETEBIONPAP_HOST TSmartButton_ZLM : public QToolButton {
    Q_OBJECT
public:
    /// "جدید F4" with its short caption "جدید"; the base screens press it by the key.
    explicit TSmartButton_ZLM(const QString &caption, QWidget *parent = nullptr,
                              const QString &shortCaption = {});
    const QString &ShortCaption() const { return m_shortCaption; }
    /// What the button itself does; svNone makes it a plain button.
    void SetSaveMode(TSaveMode mode);
    TSaveMode SaveMode() const { return m_saveMode; }

Q_SIGNALS:
    /// A way of saving was chosen from the menu. The button itself only gives clicked().
    void saveRequested(TSaveMode mode);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_shortCaption;
    TSaveMode m_saveMode = svNone;
};
