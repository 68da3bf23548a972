#include "base/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

#ifndef Q_OS_WIN

#include "base/WholeFile.h"

QString writePrivately(const QString& path, const QByteArray& content) {
    std::optional<QFile::Permissions> access;
    if (!QFile::exists(path)) access = QFile::ReadOwner | QFile::WriteOwner;
    return writeWhole(path, content, access);
}

#else

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

namespace {

/// Not const: some of the system's functions take so even what they only read.
std::wstring nativeName(const QString& path) {
    return QDir::toNativeSeparators(path).toStdWString();
}

/// A file's list of who may do what.
class AccessList {
public:
    AccessList(const AccessList&) = delete;
    AccessList& operator=(const AccessList&) = delete;
    ~AccessList() { LocalFree(m_descriptor); }

    explicit AccessList(const QString& path) {
        if (QFile::exists(path))
            GetNamedSecurityInfoW(nativeName(path).data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                  nullptr, nullptr, nullptr, &m_descriptor);
        else // its owner, the administrators, the system, and nobody that the folder would let in
            ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)(A;;FA;;;BA)(A;;FA;;;SY)",
                                                                 SDDL_REVISION_1, &m_descriptor, nullptr);
    }

    bool applyTo(const QString& path) const {
        PACL list = nullptr;
        BOOL present = FALSE;
        BOOL byDefault = FALSE;
        SECURITY_DESCRIPTOR_CONTROL control = 0;
        DWORD revision = 0;
        if (!m_descriptor || !GetSecurityDescriptorDacl(m_descriptor, &present, &list, &byDefault)
            || !GetSecurityDescriptorControl(m_descriptor, &control, &revision))
            return false;
        const DWORD inheritance = control & SE_DACL_PROTECTED ? PROTECTED_DACL_SECURITY_INFORMATION
                                                              : UNPROTECTED_DACL_SECURITY_INFORMATION;
        return SetNamedSecurityInfoW(nativeName(path).data(), SE_FILE_OBJECT,
                                     DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, list, nullptr)
               == ERROR_SUCCESS;
    }

private:
    PSECURITY_DESCRIPTOR m_descriptor = nullptr;
};

} // namespace

QString writePrivately(const QString& path, const QByteArray& content) {
    const AccessList access(path);
    QFile file(path + ".unfinished");
    const auto unfinished = qScopeGuard([&] { file.remove(); });
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    if (!access.applyTo(file.fileName())) return "Who may read it cannot be said there."; // while it is empty
    if (file.write(content) != content.size() || !file.flush()) return file.errorString();
    file.close();
    const bool done = MoveFileExW(nativeName(file.fileName()).data(), nativeName(path).data(),
                                  MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    return done ? QString() : qt_error_string();
}

#endif
