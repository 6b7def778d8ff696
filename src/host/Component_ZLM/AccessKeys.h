#pragma once

#include <QObject>

/// Access keys of Persian captions, whatever keyboard layout the user has: Alt with the Arabic yeh or kaf reaches a
/// caption written with the Persian one, and the other way round. One for the application.
class AccessKeys : public QObject {
    Q_OBJECT
public:
    explicit AccessKeys(QObject *parent);
    bool eventFilter(QObject *watched, QEvent *event) override;
};
