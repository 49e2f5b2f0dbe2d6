"""Charts as SVG, on a card of their own so that they read on a dark page and on a bright one."""

import math
from html import escape

WIDTH, LEFT, TOP = 860, 76, 84
LIGHT = {"card": "#ffffff", "text": "#1f2328", "quiet": "#656d76", "line": "#d8dee4",
         "curves": ["#0969da", "#bc4c00", "#1a7f37", "#8250df", "#bf3989", "#7d5c00"]}
DARK = {"card": "#161b22", "text": "#e6edf3", "quiet": "#8d96a0", "line": "#30363d",
        "curves": ["#58a6ff", "#f0883e", "#3fb950", "#bc8cff", "#f778ba", "#d9b44a"]}


def _rules(look):
    curves = "".join(f".c{i}{{color:{color}}}" for i, color in enumerate(look["curves"]))
    return (f".card{{fill:{look['card']};stroke:{look['line']}}}text{{fill:{look['text']}}}"
            f"text{{stroke:{look['card']}}}.quiet{{fill:{look['quiet']}}}.grid{{stroke:{look['line']}}}"
            f".y{{color:{look['quiet']}}}{curves}text.own{{fill:currentColor}}")


STYLE = ("text{font:13px Inter,'Segoe UI',Helvetica,Arial,sans-serif;paint-order:stroke;stroke-width:4;"
         "stroke-linejoin:round}text.title{font-size:17px;font-weight:600}"
         "path{fill:none;stroke:currentColor;stroke-width:2.2;stroke-linejoin:round}"
         "path.y{stroke-dasharray:7 4}path.goal{stroke-width:1.4;stroke-dasharray:2 3}"
         "circle,rect.bar{fill:currentColor}rect.bar{opacity:.45}"
         f"{_rules(LIGHT)}@media(prefers-color-scheme:dark){{{_rules(DARK)}}}"
         ".grid{stroke-width:1}.work{stroke:#8d96a0;stroke-dasharray:1.5 5}")


def number(value):
    return f"{value:,.0f}" if value >= 10 else f"{value:.2g}"


def _text(x, y, text, kind="", anchor="start"):
    return f'<text x="{x:.1f}" y="{y:.1f}" class="{kind}" text-anchor="{anchor}">{escape(text)}</text>'


def _rule(x1, y1, x2, y2, kind="grid"):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" class="{kind}"/>'


def _card(height, title, subtitle, parts):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" '
            f'height="{height}" role="img"><title>{escape(title)}</title><style>{STYLE}</style>'
            f'<rect class="card" x=".5" y=".5" width="{WIDTH - 1}" height="{height - 1}" rx="10"/>'
            + _text(22, 34, title, "title") + _text(22, 56, subtitle, "quiet")
            + "\n".join(parts) + "</svg>\n")


def _apart(wanted, least):
    """Places as near to the wanted ones as they can be `least` apart, each pushing those below it."""
    order = sorted(range(len(wanted)), key=wanted.__getitem__)
    places = list(wanted)
    for above, below in zip(order, order[1:]):
        places[below] = max(places[below], places[above] + least)
    return places


def lines(title, what, unit, curves, goals=()):
    """Curves over what there is more and more of, both axes logarithmic. `curves` are pairs of a name
    and its figures; a name that begins with "~" is a yardstick, and one in `goals` a level."""
    height, right, bottom = 480, WIDTH - 258, 424
    xs = [x for _, figures in curves for x in figures]
    ys = [y for _, figures in curves for y in figures.values()] + [y for _, y in goals]
    x_low, x_high = min(xs), max(xs)
    y_low, y_high = 10 ** math.floor(math.log10(min(ys))), max(ys) * 1.5

    def across(x):
        return LEFT + (right - LEFT) * math.log(x / x_low) / math.log(x_high / x_low)

    def up(y):
        return bottom - (bottom - TOP) * math.log(y / y_low) / math.log(y_high / y_low)

    parts = [f'<clipPath id="plot"><rect x="{LEFT}" y="{TOP}" width="{right - LEFT}" '
             f'height="{bottom - TOP}"/></clipPath><g clip-path="url(#plot)">']
    # What grows as its work does runs along these.
    for power in range(-12, 24):
        begin = y_low * 10 ** (power / 2)
        parts.append(_rule(across(x_low), up(begin), across(x_high), up(begin * x_high / x_low), "grid work"))
    parts.append("</g>")
    for power in range(math.floor(math.log10(y_low)), math.floor(math.log10(y_high)) + 1):
        y = up(10 ** power)
        parts += [_rule(LEFT, y, right, y), _text(LEFT - 8, y + 4, f"{number(10 ** power)} {unit}", "quiet", "end")]
    free = math.inf
    for x in sorted({x for _, figures in curves for x in figures}, reverse=True):
        if across(x) < free:
            free = across(x) - 12 - 8 * len(number(x))
            parts += [_rule(across(x), bottom, across(x), bottom + 5),
                      _text(across(x), bottom + 20, number(x), "quiet", "middle")]
    parts.append(_text((LEFT + right) / 2, bottom + 42, what, "quiet", "middle"))
    parts += [f'<path class="goal y" d="M{LEFT} {up(level):.1f}H{right}"/>' for _, level in goals]
    ends = _apart([up(figures[max(figures)]) for _, figures in curves], 19)
    colors = iter(range(len(curves)))
    for (name, figures), end in zip(curves, ends):
        kind = "y" if name.startswith("~") else f"c{next(colors)}"
        points = [(across(x), up(figures[x])) for x in sorted(figures)]
        parts.append(f'<path class="{kind}" d="M' + "L".join(f"{x:.1f} {y:.1f}" for x, y in points) + '"/>')
        parts += [f'<circle class="{kind}" cx="{x:.1f}" cy="{y:.1f}" r="3.2"/>' for x, y in points]
        growth = figures[max(figures)] / figures[min(figures)]
        parts.append(_text(right + 14, end + 4, f"{name.lstrip('~')}  ×{number(growth)}", f"own {kind}"))
    parts += [_text(LEFT + 6, up(level) - 5, name, "quiet") for name, level in goals]
    return _card(height, title, f"×: how many times as much as at the left, where the work has grown "
                 f"{number(x_high / x_low)} times. Dotted: as fast as the work.", parts)


def bars(title, subtitle, panels):
    """A row for each name. `panels` are a heading, a unit, the middle and the longest by name, and
    goals as pairs of a text and a value. A bar ends at the longest, a dot stands at the middle."""
    names = list(dict.fromkeys(name for _, _, figures, _ in panels for name in figures))
    begin = 40 + max(len(name) for name in names) * 6.6
    width = (WIDTH - begin - 24) / len(panels)
    height = TOP + 34 + 24 * len(names) + 20
    parts = [_text(22, TOP + 44 + 24 * row, name) for row, name in enumerate(names)]
    for column, (heading, unit, figures, goals) in enumerate(panels):
        left, span = begin + column * width, width - 84
        most = max([longest for _, longest in figures.values()] + [goal for _, goal in goals])
        parts += [_text(left, TOP, heading, "quiet"), _rule(left, TOP + 24, left, height - 20)]
        for text, goal in goals:
            x = left + span * goal / most
            parts += [f'<path class="goal y" d="M{x:.1f} {TOP + 24}V{height - 20}"/>',
                      _text(x, TOP + 18, text, "quiet", "middle")]
        for row, (middle, longest) in ((names.index(name), pair) for name, pair in figures.items()):
            y = TOP + 40 + 24 * row
            parts += [f'<rect class="bar c{column}" x="{left}" y="{y - 7}" height="14" rx="2" '
                      f'width="{span * longest / most:.1f}"/>',
                      f'<circle class="c{column}" cx="{left + span * middle / most:.1f}" cy="{y}" r="5"/>',
                      _text(left + span * longest / most + 10, y + 4, f"{number(longest)} {unit}", "quiet")]
    return _card(height, title, subtitle, parts)
