#pragma once

#include "host/Export.h"
#include "host/Message_ZLM/KeptInput.h"
#include "host/database/AnswerWait.h"

#include <QElapsedTimer>
#include <QPointer>

class QEventLoop;
class QFrame;

/// The wait of a program with windows: they are painted and moved while it goes on, input is kept for afterwards. After
/// 300 ms a panel in the front window says what is waited for, and Esc gives it up.
class KETEBIONPAP_HOST TWindowWait : public QObject, public TAnswerWait {
public:
    static constexpr int usualPanelAfter = 300;
    /// Longest time in ms that the windows are not looked after for an answer that may come at once.
    static constexpr int longestPause = 20;

    explicit TWindowWait(int panelAfter = usualPanelAfter);
    ~TWindowWait() override;
    void wait(TAwaited &awaited) override;
    bool isWaiting() const override { return m_loop != nullptr; }

private:
    void turn(TAwaited &awaited);
    void look(TAwaited &awaited);
    void showPanel(const TAwaited &awaited);
    void rest();

    const int m_panelAfter;
    TKeptInput m_input;
    QEventLoop *m_loop = nullptr;
    QElapsedTimer m_turned; ///< since the windows were looked after
    QElapsedTimer m_began;  ///< since the user waits; several requests follow each other
    QPointer<QObject> m_dispatcher;
    QPointer<QFrame> m_panel;
};
