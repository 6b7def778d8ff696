#pragma once

#include "host/Declaration_PKG/Rights_unt.h"
#include "host/NewBaseForms_PKG/BaseEditor_UNT.h"

class QTableWidget;

/// Rights as a table of ticks: one row for each part, one column for each right. Keys and buttons tick a row, a column or
/// all of it, or take the ticks away where nothing is left to be ticked.
class TRightsEditor : public TBaseEditor {
    Q_OBJECT
public:
    QTableWidget *Rights_GRD;

protected:
    explicit TRightsEditor(TFormMode mode);
    QList<TRight> TickedRights() const;
    void TickRights(const QList<TRight> &rights);
    /// Shows where a right comes from besides the tick; an empty text takes the mark away.
    void MarkRights(const std::function<QString(const TRight &)> &source);
    /// Save, exit, and the buttons that tick; after the screen's own inputs.
    void BuildRightsFooter();
    bool MayStartNew() override { return false; }

private:
    struct TPlace {
        TRight right;
        int row;
        int column;
    };
    void turn(const std::function<bool(const TPlace &)> &chosen);
    QList<TPlace> m_places;
};
