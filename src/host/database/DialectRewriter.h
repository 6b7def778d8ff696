#pragma once

#include "host/database/Tokens.h"

/// Rewrites the tokens of one T-SQL statement into those of the embedded engine, rule by rule.
class TDialectRewriter {
public:
    explicit TDialectRewriter(TTokens tokens) : m_tokens(std::move(tokens)) {}
    TTokens rewrite();

private:
    bool is(qsizetype i, const char *word) const;
    bool isName(qsizetype i) const;
    bool isCall(qsizetype i) const;
    qsizetype closing(qsizetype open) const;
    qsizetype opening(qsizetype close) const;
    qsizetype endOfCase(qsizetype from) const;
    qsizetype startOfCase(qsizetype end) const;
    void insertWord(qsizetype i, const QString &word);

    void lowerNamedPlaces();
    void dropOwners();
    void dropHints();
    void completeVerbs();
    void renameFunctions();
    void convertToCast(qsizetype function);
    void dropWidthMax();
    void moveAliases();
    qsizetype moveAlias(qsizetype item, qsizetype end);
    void moveTop();
    void joinTexts();
    void joinChain(qsizetype plus);
    void fitTable();
    void fitColumn(qsizetype from, qsizetype end);
    qsizetype widthEnd(qsizetype type) const;

    bool isBinary(qsizetype plus) const;
    qsizetype operandStart(qsizetype last) const;
    qsizetype operandEnd(qsizetype first) const;
    bool isText(qsizetype first, qsizetype end) const;
    bool hasTextArgument(qsizetype open) const;
    bool hasTextBranch(qsizetype first, qsizetype end) const;

    TTokens m_tokens;
};
