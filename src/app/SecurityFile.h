#pragma once

#include <QString>
#include <optional>

// The security file lies beside the application and holds the password of the server login, so that
// the program can connect unattended. It is enciphered and authenticated under a key made of a secret
// built into the program and a salt of the file's own. That keeps the password from casual eyes and
// lets no changed file pass; it does not keep it from somebody who has both the program and the
// file. So the file's permissions matter: only those who run the program should be able to read it.

inline constexpr auto SecurityFileName = "Zelvan.SSS";

/// Nothing when the file is missing, cannot be read, is cut short, damaged or changed; then `reason` tells
/// which, in words for the administrator.
std::optional<QString> ReadPasswordFromEncryptedSSSfile(const QString& path, QString* reason = nullptr);

/// Replaces the file as a whole or not at all. A new file may be read by its owner only; one that is
/// replaced keeps the permissions that the administrator gave it. Throws std::runtime_error, in words
/// for the user, for an empty password, one that no file can hold, and a place that cannot be written.
void WriteEncryptedSSSfile(const QString& path, const QString& password);
