#include "reports/CallTagging.h"

QString callTaggingName(int setting) {
    return callTaggingNames().value(setting, QString("Setting %1").arg(setting));
}

QStringList callTaggingNames() {
    return {"All Calls", "Exclude Business", "Exclude Private"};
}
