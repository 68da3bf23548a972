#include "reports/CallTagging.h"

bool isTaggedCallReport(int reportSubType) {
    return reportSubType == 191 || reportSubType == 192;
}

QString callTaggingName(int setting) {
    return callTaggingNames().value(setting, QString("Setting %1").arg(setting));
}

QStringList callTaggingNames() {
    return {"All Calls", "Exclude Business", "Exclude Private"};
}
