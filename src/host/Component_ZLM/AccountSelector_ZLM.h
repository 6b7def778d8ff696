#pragma once

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Accounts_unt.h"
#include "host/Export.h"

#include <QTimer>
#include <QWidget>

#include <array>

class QLabel;

/// A ledger account: a code box for each of its three levels, each with a picker (button, Alt+Down or F2), and the
/// names of what was typed. A code that the chart does not have is told at its box and beside the boxes; it stays as
/// typed and counts as no code.
class KETEBIONPAP_HOST TSelect_AccountCode : public QWidget {
    Q_OBJECT
public:
    explicit TSelect_AccountCode(QWidget *parent = nullptr);

    TSmartButtonEdit_ZLM *TotalCode_EDT;
    TSmartButtonEdit_ZLM *AssistantCode_EDT;
    TSmartButtonEdit_ZLM *DetailCode_EDT;
    QLabel *Name_LBL;

    /// Which levels can be typed.
    void EnableLevels(bool total, bool assistant, bool detail);
    /// Largest code of the detail box; 2147483647 unless set.
    void SetDetailLimit(int largest);
    void Clear();
    /// Puts codes into the boxes, "0" and empty texts as empty boxes, and looks the names up.
    void SetCodes(const QString &total, const QString &assistant, const QString &detail);
    /// Looks the names up again.
    void Refresh();

    // The codes; 0 for a box that is empty or holds a code that the chart does not have. While the chart cannot be
    // read, the codes as typed.
    int TotalCode() { return code(alTotal); }
    int AssistantCode() { return code(alAssistant); }
    int DetailCode() { return code(alDetail); }

Q_SIGNALS:
    void changed(); ///< one of the codes, by user or program

private:
    struct TLevel {
        TSmartButtonEdit_ZLM *box = nullptr;
        QString caption;
        QString name;
        bool missing = false;
    };
    int code(TAccountLevel level);
    TAccountCode typed() const;
    void typedInto();
    void left(TAccountLevel level);
    void pick(TAccountLevel level);
    QString missingText(TAccountLevel level) const;

    std::array<TLevel, 3> m_levels;
    QTimer m_soon; ///< names follow the typing when it pauses
    bool m_stale = false;
};
