#pragma once

#include <QString>

#include <unordered_map>

/// What was made of a statement's text, kept by that text: a text seen before costs a look-up.
template <class T>
class TByText {
public:
    /// What `make` answers for this text. Good until the next call.
    const T &get(const QString &text, T (*make)(const QString &))
    {
        const auto found = m_known.find(text);
        if (found != m_known.end())
            return found->second;
        T made = make(text);
        if (m_known.size() >= most)
            m_known.clear();
        return m_known.emplace(text, std::move(made)).first->second;
    }

private:
    // Statements carry no values, so there are as many as the program has; the bound is for lists of codes, which
    // have a text for each length.
    static constexpr std::size_t most = 4096;
    std::unordered_map<QString, T> m_known;
};
