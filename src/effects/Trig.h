// Sine and cosine from plain IEEE double arithmetic, so every build gets the same bits:
// the C libraries of the two builds do not agree to the last place. Accurate to about
// one unit in the last place for |x| up to a few thousand.
#pragma once

double PortableSin(double x);
double PortableCos(double x);
