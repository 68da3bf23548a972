#pragma once

#include <QString>

/// Whether an e-mail address may be entered. Lenient in places that the addresses in use rely on: what
/// follows the last full stop needs only to occur in the list of known endings, so the beginning of an
/// ending passes, and several "@" pass. Never shorter than 6 characters.
bool isValidEmailAddress(const QString& address);
