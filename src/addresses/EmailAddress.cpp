#include "addresses/EmailAddress.h"

namespace {

const QString& knownEndings() {
    static const QString endings =
        ".AF.AL.DZ.AS.AD.AO.AI.AQ.AG.AP.AR.AM.AW.AU.AT.AZ.BS.BH.BD.BB.BY.BE.BZ.BJ.BM.BT.BO.BA.BW.BV.BR.IO.BN."
        "BG.BF.MM"
        ".BI.KH.CM.CA.CV.KY.CF.TD.CL.CN.CX.CC.CO.KM.CG.CD.CK.CR.CI.HR.CU.CY.CZ.DK.DJ.DM.DO.TP.EC.EG.SV.GQ.ER."
        "EE.ET.FK"
        ".FO.FJ.FI.CS.SU.FR.FX.GF.PF.TF.GA.GM.GE.DE.GH.GI.GB.GR.GL.GD.GP.GU.GT.GN.GW.GY.HT.HM.HN.HK.HU.IS.IN."
        "ID.IR.IQ"
        ".IE.IL.IT.JM.JP.JO.KZ.KE.KI.KW.KG.LA.LV.LB.LS.LR.LY.LI.LT.LU.MO.MK.MG.MW.MY.MV.ML.MT.MH.MQ.MR.MU.YT."
        "MX.FM.MD"
        ".MC.MN.MS.MA.MZ.NA.NR.NP.NL.AN.NT.NC.NZ.NI.NE.NG.NU.NF.KP.MP.NO.OM.PK.PW.PA.PG.PY.PE.PH.PN.PL.PT.PR."
        "QA.RE.RO"
        ".RU.RW.GS.SH.KN.LC.PM.ST.VC.SM.SA.SN.SC.SL.SG.SK.SI.SB.SO.ZA.KR.ES.LK.SD.SR.SJ.SZ.SE.CH.SY.TJ.TW.TZ."
        "TH.TG.TK"
        ".TO.TT.TN.TR.TM.TC.TV.UG.UA.AE.UK.US.UY.UM.UZ.VU.VA.VE.VN.VG.VI.WF.WS.EH.YE.YU.ZR.ZM.ZW"
        " .COM.EDU.GOV.NET.BIZ.ORG.TV";
    return endings;
}

bool isKnownEnding(const QString& ending) {
    return knownEndings().contains('.' + ending.toUpper());
}

} // namespace

bool isValidEmailAddress(const QString& address) {
    constexpr qsizetype shortest = 6;
    const qsizetype at = address.indexOf('@');
    if (at <= 0 || at == address.size() - 1) return false;
    if (address.startsWith('.') || address.endsWith('.')) return false;
    return isKnownEnding(address.mid(address.lastIndexOf('.') + 1)) && address.size() >= shortest;
}
