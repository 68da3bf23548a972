#include "app/SecurityFile.h"

#include "base/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <array>
#include <sodium.h>
#include <stdexcept>

namespace {

// The file: mark and version, salt, nonce, then the enciphered password with its seal. Whatever
// stands before the cipher text is sealed along with it.
constexpr char Mark[] = {'Z', 'S', 'S', 'S', 1};
constexpr qsizetype SaltAt = sizeof Mark;
constexpr qsizetype NonceAt = SaltAt + crypto_generichash_KEYBYTES;
constexpr qsizetype HeaderLength = NonceAt + crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr qsizetype SealLength = crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr qsizetype LongestPassword = 4096; ///< in bytes of UTF-8

constexpr auto NoEncryption = "The encryption library cannot be started.";
constexpr char ApplicationSecret[] = "zelvan-scheduler security file 7c1f0e5ab94d4f0c8a3b";

const unsigned char* bytes(const QByteArray& array, qsizetype at = 0) {
    return reinterpret_cast<const unsigned char*>(array.constData()) + at;
}

unsigned char* bytes(QByteArray& array, qsizetype at = 0) {
    return reinterpret_cast<unsigned char*>(array.data()) + at;
}

/// The key that belongs to a header's salt; wiped when it goes.
class Key {
public:
    explicit Key(const QByteArray& header) {
        crypto_generichash(m_key.data(), m_key.size(),
                           reinterpret_cast<const unsigned char*>(ApplicationSecret),
                           sizeof ApplicationSecret, bytes(header, SaltAt), crypto_generichash_KEYBYTES);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() { sodium_memzero(m_key.data(), m_key.size()); }
    const unsigned char* data() const { return m_key.data(); }

private:
    std::array<unsigned char, crypto_aead_xchacha20poly1305_ietf_KEYBYTES> m_key;
};

void wipe(QByteArray& secret) {
    sodium_memzero(secret.data(), std::size_t(secret.size()));
}

QByteArray newHeader() {
    QByteArray header(HeaderLength, '\0');
    std::copy(std::begin(Mark), std::end(Mark), header.begin());
    randombytes_buf(bytes(header, SaltAt), std::size_t(HeaderLength - SaltAt));
    return header;
}

QByteArray enciphered(const QByteArray& password) {
    const QByteArray header = newHeader();
    const Key key(header);
    QByteArray cipher(password.size() + SealLength, '\0');
    crypto_aead_xchacha20poly1305_ietf_encrypt(bytes(cipher), nullptr, bytes(password),
                                               quint64(password.size()), bytes(header), HeaderLength, nullptr,
                                               bytes(header, NonceAt), key.data());
    return header + cipher;
}

std::optional<QByteArray> deciphered(const QByteArray& contents) {
    const qsizetype length = contents.size() - HeaderLength - SealLength;
    if (length <= 0 || length > LongestPassword) return {};
    if (!std::equal(std::begin(Mark), std::end(Mark), contents.begin())) return {};
    const QByteArray header = contents.left(HeaderLength);
    const Key key(header);
    QByteArray password(length, '\0');
    const int refused = crypto_aead_xchacha20poly1305_ietf_decrypt(
        bytes(password), nullptr, nullptr, bytes(contents, HeaderLength), quint64(length + SealLength),
        bytes(header), HeaderLength, bytes(header, NonceAt), key.data());
    if (refused) return {};
    return password;
}

[[noreturn]] void fail(const QString& words) {
    throw std::runtime_error(words.toStdString());
}

} // namespace

std::optional<QString> ReadPasswordFromEncryptedSSSfile(const QString& path, QString* reason) {
    const auto nothing = [&](const QString& why) {
        if (reason) *reason = QString("%1: %2").arg(QDir::toNativeSeparators(path), why);
        return std::nullopt;
    };
    if (sodium_init() < 0) return nothing(NoEncryption);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return nothing(file.errorString());
    // One byte more than the longest file is enough to tell that a file is too long.
    auto password = deciphered(file.read(HeaderLength + LongestPassword + SealLength + 1));
    if (file.error() != QFile::NoError) return nothing(file.errorString());
    if (!password) return nothing("The file is damaged, was changed, or is no security file.");
    const auto used = qScopeGuard([&] { wipe(*password); });
    return QString::fromUtf8(*password);
}

void WriteEncryptedSSSfile(const QString& path, const QString& password) {
    QByteArray text = password.toUtf8();
    const auto used = qScopeGuard([&] { wipe(text); });
    if (text.isEmpty()) fail("The password is empty.");
    if (text.size() > LongestPassword) fail("The password is too long.");
    if (sodium_init() < 0) fail(NoEncryption);
    if (const QString problem = writePrivately(path, enciphered(text)); !problem.isEmpty())
        fail(QString("The file %1 cannot be written: %2").arg(QDir::toNativeSeparators(path), problem));
}
