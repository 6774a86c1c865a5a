"""The bars of ./k7 bench wire, as SVG."""

WIDTH, LEFT, RIGHT = 760, 170, 90
BAR, GAP, HEAD = 18, 6, 34
COLOURS = {"printcore": "#9aa5b1", "bare": "#5b7083", "bare_window": "#8296a6",
           "window": "#c8742b", "callback": "#e0a15e"}


def text(x, y, words, **more):
    attributes = "".join(f' {name.replace("_", "-")}="{value}"' for name, value in more.items())
    return f'<text x="{x:.1f}" y="{y:.1f}"{attributes}>{words}</text>'


def draw(rates, senders, conditions, limits):
    """One group of bars a condition, each with its own scale; a line marks what can get through."""
    parts, y = [], 46
    span = WIDTH - LEFT - RIGHT
    for name, title in conditions.items():
        limit = limits.get(name)
        most = max([rate[name] for rate in rates.values() if name in rate] + [limit or 0])
        parts.append(text(14, y + 12, title, font_weight="bold"))
        if limit:
            parts.append(text(LEFT + span * limit / most, y + 12, f"at most {limit:.1f}",
                              text_anchor="end", fill="#666"))
        y += HEAD - 12
        top = y
        for sender, label in senders.items():
            if name not in rates[sender]:
                continue
            rate = rates[sender][name]
            length = span * rate / most
            parts.append(text(LEFT - 8, y + 13, label, text_anchor="end"))
            parts.append(f'<rect x="{LEFT}" y="{y}" width="{length:.1f}" height="{BAR}"'
                         f' fill="{COLOURS[sender]}"/>')
            digits = 0 if rate >= 2000 else 1
            parts.append(text(LEFT + length + 6, y + 13, f"{rate:,.{digits}f}"))
            y += BAR + GAP
        if limit:
            x = LEFT + span * limit / most
            parts.append(f'<line x1="{x:.1f}" y1="{top - 4}" x2="{x:.1f}" y2="{y}" stroke="#666"'
                         ' stroke-dasharray="4 3"/>')
        y += 18
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{y}"'
            f' viewBox="0 0 {WIDTH} {y}" font-family="Liberation Sans, Arial, sans-serif"'
            ' font-size="12">\n<rect width="100%" height="100%" fill="white"/>\n')
    title = text(14, 24, "Lines a second that reach the machine (27 bytes each, two cores)",
                 font_size="15", font_weight="bold")
    return head + "\n".join([title] + parts) + "\n</svg>\n"
