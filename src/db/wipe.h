#pragma once

#include <QString>

/// Empties a secret text; what it held is overwritten, unless somebody else shares it.
inline void wipe(QString& secret) {
    if (secret.isDetached()) {
        volatile char16_t* letters = reinterpret_cast<char16_t*>(secret.data()); // or it would be left out
        for (qsizetype i = 0; i < secret.size(); ++i) letters[i] = 0;
    }
    secret.clear();
}
