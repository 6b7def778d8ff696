#pragma once

#include <QString>

/// A stored setting of the suite, as its readers want it.
class TParamValue {
public:
    explicit TParamValue(const QString &text) : m_text(text) {}
    int AsInteger() const { return m_text.trimmed().toInt(); } ///< 0 when it is no number
    bool AsBoolean() const;                                    ///< "1" or "true"
    const QString &AsString() const { return m_text; }

private:
    QString m_text;
};

/// The settings that all workstations share (table CustomParam), by number. Throws TDatabaseError.
struct TCustomParam {
    /// An unknown number gives an empty value.
    static TParamValue GetData(int number);
    /// At most 200 characters are stored.
    static void SetData(int number, const QString &value);
};
