// SPDX-License-Identifier: MIT
#include "read/read_state.h"

PF *ref_file = nullptr;
PF *com_file = nullptr;
std::uint64_t glMaxSigLen = 0;
char *rundate = nullptr;
char *runtime = nullptr;
std::int64_t file_end = 0;
int fsDataFormat = 0;
int fsFormatErr = 0;

int ACcnt, DCcnt, TRcnt, NOcnt, DIcnt, FOcnt, MRcnt, PSScnt, PACcnt, PXFcnt, PNOISEcnt, XFcnt, STBcnt;
int OPcnt, PZcnt;
int INOPcnt, INTRcnt, INPSScnt;
int INDCcnt;
int TRFORCEcnt, PSSFORCEcnt;
int INOPsigcnt, INTRsigcnt, INPSSsigcnt, INDCsigcnt, TRFORCEsigcnt, PSSFORCEsigcnt;
