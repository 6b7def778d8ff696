#pragma once

#include "host/NewBaseForms_PKG/Recovery_UNT.h"

/// Answers recovery questions from a list and keeps what was asked.
class ScriptedRecovery : public TRecoveryChooser {
public:
    ScriptedRecovery() { SetRecoveryChooser(this); }
    ~ScriptedRecovery() override { SetRecoveryChooser(nullptr); }
    TRecoveryChoice choose(const TRecoveryRequest &request, QWidget *) override
    {
        asked << request;
        return answers.isEmpty() ? TRecoveryChoice{} : answers.takeFirst();
    }
    QList<TRecoveryRequest> asked;
    QList<TRecoveryChoice> answers;
};
