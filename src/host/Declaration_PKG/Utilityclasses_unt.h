#pragma once

#include <QString>

/// A stored setting, read as what it is.
class TParamValue {
public:
    TParamValue() = default;
    explicit TParamValue(const QString &text) : m_text(text) {}
    int AsInteger() const;  ///< 0 where the text is no whole number
    bool AsBoolean() const; ///< true for every whole number but 0, and for "true"
    QString AsString() const { return m_text; }

private:
    QString m_text;
};

/// The suite's stored settings, by number; the same for all workstations.
class TCustomParam {
public:
    /// A setting that was never stored is empty. Throws TDatabaseError.
    static TParamValue GetData(int number);
    /// Stores at most 400 characters. Throws TDatabaseError.
    static void SetData(int number, const QString &value);
};
