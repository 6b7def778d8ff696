#pragma once

#include <QTemporaryDir>

/// An authority of a test's own, and certificates for 127.0.0.1 by it, as PEM files that go with this.
class TestCertificates {
public:
    enum Kind { Good, OtherName, Expired, NotYet, UnknownIssuer };
    TestCertificates();

    /// The authority's file (CAFile).
    QString authority() const { return m_folder.filePath("authority.pem"); }
    /// A certificate and its key in one file.
    QString certificate(Kind kind) const;

private:
    QTemporaryDir m_folder;
};
