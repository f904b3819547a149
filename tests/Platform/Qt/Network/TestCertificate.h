#pragma once
#include <QByteArray>
#include <QHostAddress>
#include <QSslCertificate>
#include <QSslKey>
#include <memory>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>
#include <stdexcept>
#include <string>

namespace quillane {

// A certificate for one host, by its name or its number, with its key, made anew and signed by itself.
class TestCertificate {
  public:
    explicit TestCertificate(const std::string& host, long validForSeconds = 3'600) {
        const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"), &EVP_PKEY_free);
        const std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), &X509_free);
        X509_set_version(certificate.get(), X509_VERSION_3);
        ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), ++lastSerial());
        X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -7'200);
        X509_gmtime_adj(X509_getm_notAfter(certificate.get()), validForSeconds);
        X509_set_pubkey(certificate.get(), key.get());
        auto* const name = X509_get_subject_name(certificate.get());
        X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("Test"),
                                   -1, -1, 0);
        X509_set_issuer_name(certificate.get(), name);
        add(*certificate, NID_basic_constraints, "critical,CA:TRUE");
        const bool isNumber = !QHostAddress(QString::fromStdString(host)).isNull();
        add(*certificate, NID_subject_alt_name, (isNumber ? "IP:" : "DNS:") + host);
        if (X509_sign(certificate.get(), key.get(), EVP_sha256()) == 0) {
            throw std::runtime_error("no certificate could be made");
        }
        m_certificate =
            QSslCertificate(text([&](BIO* out) { return PEM_write_bio_X509(out, certificate.get()); }));
        m_key = QSslKey(text([&](BIO* out) {
                            return PEM_write_bio_PrivateKey(out, key.get(), nullptr, nullptr, 0, nullptr,
                                                            nullptr);
                        }),
                        QSsl::Ec);
    }

    const QSslCertificate& certificate() const { return m_certificate; }
    const QSslKey& key() const { return m_key; }

  private:
    static long& lastSerial() {
        static long serial = 0;
        return serial;
    }
    static void add(X509& certificate, int kind, const std::string& value) {
        const std::unique_ptr<X509_EXTENSION, decltype(&X509_EXTENSION_free)> extension(
            X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str()), &X509_EXTENSION_free);
        X509_add_ext(&certificate, extension.get(), -1);
    }
    template <class Write>
    static QByteArray text(Write write) {
        const std::unique_ptr<BIO, decltype(&BIO_free)> out(BIO_new(BIO_s_mem()), &BIO_free);
        write(out.get());
        const char* bytes = nullptr;
        const long size = BIO_get_mem_data(out.get(), &bytes);
        return {bytes, static_cast<qsizetype>(size)};
    }

    QSslCertificate m_certificate;
    QSslKey m_key;
};

} // namespace quillane
