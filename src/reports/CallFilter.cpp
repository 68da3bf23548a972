#include "reports/CallFilter.h"

QString callFilterName(int callFilter) {
    switch (callFilter) {
    case AllLinesAndMobiles:
        return "All Lines and Mobiles";
    case AllLines:
        return "All Lines";
    case AllMobiles:
        return "All Mobiles";
    case AllLinesDataOnly:
        return "All Lines (Data only)";
    case AllLinesVoiceOnly:
        return "All Lines (Voice only)";
    default:
        return {};
    }
}
