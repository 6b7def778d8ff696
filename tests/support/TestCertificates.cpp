#include "support/TestCertificates.h"

#include <QFile>

#include <arpa/inet.h>
#include <ctime>
#include <gnutls/x509.h>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

void check(int code)
{
    if (code < 0)
        throw std::runtime_error(gnutls_strerror(code));
}

/// A key and its certificate.
struct TPair {
    TPair()
    {
        check(gnutls_x509_privkey_init(&key));
        check(gnutls_x509_privkey_generate(key, GNUTLS_PK_RSA, 2048, 0));
        check(gnutls_x509_crt_init(&certificate));
        check(gnutls_x509_crt_set_version(certificate, 3));
        check(gnutls_x509_crt_set_key(certificate, key));
        static unsigned char serial = 0;
        ++serial;
        check(gnutls_x509_crt_set_serial(certificate, &serial, 1));
    }
    ~TPair()
    {
        gnutls_x509_crt_deinit(certificate);
        gnutls_x509_privkey_deinit(key);
    }
    TPair(const TPair &) = delete;

    void setName(const char *name)
    {
        check(gnutls_x509_crt_set_dn_by_oid(certificate, GNUTLS_OID_X520_COMMON_NAME, 0, name,
                                            unsigned(qstrlen(name))));
    }
    void setDays(int from, int to)
    {
        const time_t day = time_t(24) * 60 * 60;
        check(gnutls_x509_crt_set_activation_time(certificate, std::time(nullptr) + from * day));
        check(gnutls_x509_crt_set_expiration_time(certificate, std::time(nullptr) + to * day));
    }
    void sign(const TPair &by)
    {
        check(gnutls_x509_crt_sign2(certificate, by.certificate, by.key, GNUTLS_DIG_SHA256, 0));
    }
    void write(const QString &name, bool withKey) const
    {
        QFile file(name);
        gnutls_datum_t text{};
        check(gnutls_x509_crt_export2(certificate, GNUTLS_X509_FMT_PEM, &text));
        QByteArray all(reinterpret_cast<const char *>(text.data), text.size);
        gnutls_free(text.data);
        if (withKey) {
            check(gnutls_x509_privkey_export2(key, GNUTLS_X509_FMT_PEM, &text));
            all.append(reinterpret_cast<const char *>(text.data), text.size);
            gnutls_free(text.data);
        }
        if (!file.open(QIODevice::WriteOnly) || file.write(all) != all.size())
            throw std::runtime_error("a test's certificate cannot be written");
    }

    gnutls_x509_privkey_t key = nullptr;
    gnutls_x509_crt_t certificate = nullptr;
};

void makeAuthority(TPair &pair, const char *name)
{
    pair.setName(name);
    pair.setDays(-100, 100);
    check(gnutls_x509_crt_set_basic_constraints(pair.certificate, 1, -1));
    check(gnutls_x509_crt_set_key_usage(pair.certificate, GNUTLS_KEY_KEY_CERT_SIGN));
    pair.sign(pair);
}

} // namespace

QString TestCertificates::certificate(Kind kind) const
{
    return m_folder.filePath(u"server-%1.pem"_s.arg(int(kind)));
}

TestCertificates::TestCertificates()
{
    TPair known, unknown;
    makeAuthority(known, "The test's authority");
    makeAuthority(unknown, "Nobody's authority");
    known.write(authority(), false);
    for (const Kind kind : {Good, OtherName, Expired, NotYet, UnknownIssuer}) {
        TPair server;
        server.setName("server of the test");
        server.setDays(kind == NotYet ? 10 : -50, kind == Expired ? -10 : 50);
        const char *name = "other.example";
        in_addr address{htonl(INADDR_LOOPBACK)};
        if (kind == OtherName)
            check(gnutls_x509_crt_set_subject_alt_name(server.certificate, GNUTLS_SAN_DNSNAME, name,
                                                       unsigned(qstrlen(name)), GNUTLS_FSAN_SET));
        else
            check(gnutls_x509_crt_set_subject_alt_name(server.certificate, GNUTLS_SAN_IPADDRESS, &address,
                                                       sizeof(address), GNUTLS_FSAN_SET));
        server.sign(kind == UnknownIssuer ? unknown : known);
        server.write(certificate(kind), true);
    }
}
