// SPDX-License-Identifier: MIT
#include "compare/trace_lines.h"

#include "support/transcript.h"

void trace_grid(int most_points, int ndiv)
{
    transcript_printf("maxpts = %d  ndiv = %d\n", most_points, ndiv);
}

void trace_second_integration()
{
    transcript_puts("\n\n beginning matching waveform integration.....\n");
}

void trace_areas(int entry, double difference, double ref, double cmp)
{
    transcript_printf("%d dif=%g ref=%g val=%g\n", entry, difference, ref, cmp);
}

void trace_same(double piece, const PT &from, const PT &to, int entry)
{
    transcript_printf("area = %g,  xold = %g,  x = %g,  yold = %g,  y = %g, index = %d\n", piece, from.x,
                      to.x, from.val, to.val, entry);
}

void trace_boundary(double piece, const PT &from, const PT &to, int boundary, int left, int right)
{
    if (boundary < right) {
        transcript_printf("i = %d,  left_index = %d,  right_index = %d\n", boundary, left, right);
    }
    transcript_printf("%s = %g,  xold = %g,  xmid = %g,  yold = %g,  ymid = %g,  index = %d\n",
                      boundary < right ? "a" : "leftarea", piece, from.x, to.x, from.val, to.val, boundary);
}

void trace_right(double piece, const PT &from, const PT &to, int entry)
{
    transcript_printf("rightarea = %g,  xmid = %g,  x = %g,  ymid = %g,  y = %g,  index = %d\n", piece,
                      from.x, to.x, from.val, to.val, entry);
}
