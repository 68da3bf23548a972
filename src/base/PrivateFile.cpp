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

    /// A new file that has it from the beginning and that nobody else can open; an invalid handle when it
    /// cannot be made.
    HANDLE create(const QString& path) const {
        SECURITY_ATTRIBUTES attributes{sizeof attributes, m_descriptor, FALSE};
        if (!m_descriptor) return INVALID_HANDLE_VALUE;
        return CreateFileW(nativeName(path).data(), GENERIC_WRITE, 0, &attributes, CREATE_NEW,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    }

private:
    PSECURITY_DESCRIPTOR m_descriptor = nullptr;
};

} // namespace

QString writePrivately(const QString& path, const QByteArray& content) {
    const QString unfinished = path + ".unfinished";
    QFile::remove(unfinished); // of a former attempt
    const HANDLE file = AccessList(path).create(unfinished);
    if (file == INVALID_HANDLE_VALUE) return qt_error_string();
    const auto gone = qScopeGuard([&] { QFile::remove(unfinished); });
    DWORD written = 0;
    bool done = WriteFile(file, content.constData(), DWORD(content.size()), &written, nullptr)
                && FlushFileBuffers(file);
    const QString problem = done ? QString() : qt_error_string();
    CloseHandle(file);
    if (!done) return problem;
    done = MoveFileExW(nativeName(unfinished).data(), nativeName(path).data(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    return done ? QString() : qt_error_string();
}

#endif
