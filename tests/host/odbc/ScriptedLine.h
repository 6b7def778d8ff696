#pragma once

#include "SqliteDriverEngine.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

/// What happens to the texts of an engine before they are sent; a test gives it from outside, while the engine works.
class LineScript {
public:
    /// Keeps every text that holds this back until speak(), as a line that went silent does.
    void silenceAt(const QString &text)
    {
        const std::lock_guard lock(m_mutex);
        m_silent = text;
    }
    void speak()
    {
        const std::lock_guard lock(m_mutex);
        m_silent.clear();
        m_changed.notify_all();
    }
    QStringList texts() const
    {
        const std::lock_guard lock(m_mutex);
        return m_texts;
    }
    /// Waits until a text that holds this was given to the engine.
    bool waitFor(const QString &text)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(10),
                                  [&] { return !m_texts.filter(text, Qt::CaseInsensitive).isEmpty(); });
    }
    void come(const QString &text)
    {
        std::unique_lock lock(m_mutex);
        m_texts.append(text);
        m_changed.notify_all();
        const auto isSilent = [&] {
            return !m_silent.isEmpty() && text.contains(m_silent, Qt::CaseInsensitive);
        };
        m_changed.wait(lock, [&] { return !isSilent(); });
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QString m_silent;
    QStringList m_texts;
};

/// The driver of SQLite behind a line that a test directs.
class ScriptedLine : public SqliteDriverEngine {
public:
    ScriptedLine(const QString &file, const std::shared_ptr<LineScript> &script)
        : SqliteDriverEngine(file, ConnectLater), m_file(file), m_script(script)
    {
    }
    std::unique_ptr<TLineEngine> successor() override
    {
        auto next = std::make_unique<ScriptedLine>(m_file, m_script);
        next->succeed(*this);
        return next;
    }

protected:
    void aboutToSend(const QString &text) override { m_script->come(text); }

private:
    QString m_file;
    std::shared_ptr<LineScript> m_script;
};
