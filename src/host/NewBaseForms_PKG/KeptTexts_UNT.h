#pragma once

#include <QList>
#include <QPointer>
#include <QString>

class TSmartEdit_ZLM;

/// The text inputs of an editor with the columns that keep what is typed into them. An input may take more than its
/// column; the user is told what would be lost before it is.
class TKeptTexts {
public:
    void Add(TSmartEdit_ZLM *input, const QString &table, const QString &column);
    /// Asks when a text is longer than its column. Null: nothing is lost, or the user wants it so; otherwise the first
    /// input that the user wants to shorten. Throws TDatabaseError.
    TSmartEdit_ZLM *Refused() const;

private:
    struct TKept {
        QPointer<TSmartEdit_ZLM> input;
        QString table;
        QString column;
    };
    QList<TKept> m_kept;
};
