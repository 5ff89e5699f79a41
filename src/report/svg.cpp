// SPDX-License-Identifier: MIT
#include "report/svg.h"

#include "report/svg_kinds.h"

namespace report
{

std::string figure_svg(const Figure &figure)
{
    switch (figure.kind) {
    case FigureKind::BARS:
        return bars_svg(figure);
    case FigureKind::PLANE:
        return plane_svg(figure);
    case FigureKind::WAVES:
        break;
    }
    return waves_svg(figure);
}

} // namespace report
