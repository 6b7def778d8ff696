#pragma once

#include <QWidget>

class QComboBox;
class QTimer;
class TSmartEdit_ZLM;
class TZelmoSearchManager;

/// Pick the column, type, the list narrows while typing. Down goes to the list.
class TGeneral_Search_Frame : public QWidget {
    Q_OBJECT
public:
    explicit TGeneral_Search_Frame(QWidget *parent);
    /// Offers the manager's items, empties the text and runs the search.
    void init(TZelmoSearchManager *manager);
    QComboBox *Field_CMB() const { return m_field; }
    TSmartEdit_ZLM *Search_EDT() const { return m_text; }

Q_SIGNALS:
    void searchChanged(); ///< the condition is set in the manager; run the search
    void leaveDown();     ///< Down was pressed

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void apply();
    QComboBox *m_field;
    TSmartEdit_ZLM *m_text;
    TZelmoSearchManager *m_manager = nullptr;
};
