#pragma once

#include "host/Component_ZLM/SmartGrid_ZLM.h"
#include "host/Export.h"

#include <QWidget>

class QGridLayout;
class QLabel;
class QToolButton;
class TQuery;

/// The current row of a query, field by field. The user may fold the strip away and choose its fields (context
/// menu); both are remembered under the strip's object name and its window's class.
class KETEBIONPAP_HOST TDetailStrip_ZLM : public QWidget {
    Q_OBJECT
public:
    /// `columnsPerLine`: how many fields stand side by side.
    TDetailStrip_ZLM(QWidget *parent, const QString &objectName, const QString &caption, TQuery *query,
                     const QList<TGridColumn> &fields, int columnsPerLine);

    /// The text shown for a field; empty when there is no row.
    QString ShownText(const QString &field) const;
    bool IsExpanded() const;
    void SetExpanded(bool expanded);
    void SetFieldShown(const QString &field, bool shown);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void refresh();
    void arrange();
    QString layoutKey() const;
    void saveLayout() const;
    void restoreLayout();

    struct Field {
        TGridColumn column;
        QLabel *caption;
        QLabel *value;
        bool shown = true;
    };
    TQuery *m_query;
    QString m_caption;
    bool m_expanded = true;
    QList<Field> m_fields;
    QToolButton *m_fold;
    QWidget *m_box;
    QGridLayout *m_grid;
    int m_perLine;
    bool m_restored = false;
};
