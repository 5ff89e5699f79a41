// SPDX-License-Identifier: MIT
#include "compare/compare_state.h"

int headerPrinted[kAnalysisCount] = {};
int glNANflag = 0;
double force_time = 0.0;
int new_force_time = 0;
double xmin = 1e30;
double xmax = -1e30;
double ymin = 1e30;
double ymax = -1e30;
int maxpts = 0;
