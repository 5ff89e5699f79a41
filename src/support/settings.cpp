// SPDX-License-Identifier: MIT
#include "support/settings.h"

int debug = 0;
int reverse_bytes = 1;

double glAbstol = 1e-12;
double glReltol = 0.01;

int glAonly = 0;
int glRonly = 0;
int glAorR = 0;
int glAandR = 0;
int glDefaultChecking = 0;

int desert = 0;

int pun_index = 0;
int indexmirel = 0;
int indexrdinp = 0;
