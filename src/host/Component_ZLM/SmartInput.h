#pragma once

#include "host/Export.h"

#include <QString>
#include <QVariant>

class QWidget;

/// What all input controls have in common. Controls derive from this and from their Qt widget, and have the
/// signal changed() (the value changed, by user or program); those that are typed into also have exited() (the focus
/// left the input for another widget of the same window).
class KETEBIONPAP_HOST TSmartInput {
public:
    virtual ~TSmartInput();
    /// The value as its column stores it (int, double, bool, QString); a null variant when empty.
    virtual QVariant GetValue() const = 0;
    virtual void SetValue(const QVariant &value) = 0;
    /// The value as text: numbers plain (Latin digits, no separators), dates "1404/01/05".
    virtual QString GetText() const = 0;
    virtual void SetText(const QString &text) = 0;
    virtual bool IsEmpty() const = 0;
    /// Whether what is typed is a value of this input's kind. When it is not, a balloon at the input says why.
    virtual bool IsValid() = 0;
    /// The number of the notification that IsValid would give now; 0: valid. Tells nobody.
    virtual int WrongNote() const { return 0; }
    virtual void Clear() { SetText({}); }
    virtual QWidget *Widget() = 0;
};
