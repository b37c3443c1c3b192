# SPDX-License-Identifier: MIT
"""A table and a chart of what programs cost: see tools/benchmarks/scoreboard."""

from dataclasses import dataclass
from xml.sax.saxutils import escape

from running_cost import Use

OURS, FLOOR, REMOTE_CONTROL, PLAYER = KINDS = "ours", "floor", "remote control", "player"


@dataclass(frozen=True)
class Program:
    name: str
    kind: str
    command: tuple[str, ...] = ()

    @property
    def shows_another_player(self) -> bool:
        return self.kind != PLAYER


@dataclass
class Score:
    """None is not measured."""

    window: float  # ms
    pixel: float  # ms
    private: float  # MiB
    resident: float  # MiB
    playing: Use | None
    paused: Use
    hidden: Use
    messages: float | None  # a minute
    longest_turn: float | None  # ms


def cell(value: float | None, places: int = 0) -> str:
    return "–" if value is None else f"{value:.{places}f}"


def table(scores: dict[Program, Score]) -> str:
    lines = ["| | first window, ms | first pixel, ms | private, MiB | resident, MiB | switches a second: playing | paused "
             "| hidden | % of a core: playing | paused | hidden | messages a minute | longest turn, ms |",
             "|---|" + "--:|" * 12]
    for program, score in scores.items():
        uses = (score.playing, score.paused, score.hidden)
        cells = [cell(score.window), cell(score.pixel), cell(score.private, 1), cell(score.resident, 1),
                 *(cell(use and use.switches, 1) for use in uses), *(cell(use and use.load, 2) for use in uses),
                 cell(score.messages), cell(score.longest_turn)]
        name = f"**{program.name}**" if program.kind == OURS else program.name
        lines.append(f"| {name} | " + " | ".join(cells) + " |")
    return "\n".join(lines)


# The chart's measures, in pixels.
EDGE, NAMES, BAR, VALUE, GAP = 16, 150, 110, 44, 18
ROW, BAR_HEIGHT, TOP, LEGEND = 20, 12, 94, 34
LEAST_BAR = 1.0
WORDS = {OURS: "Tunedeck", FLOOR: "the least that a window costs", REMOTE_CONTROL: "shows another player",
         PLAYER: "player, without a track"}
# The chart has a ground of its own, so that it can be read on any page.
STYLE = """
text { font: 12px system-ui, "DejaVu Sans", sans-serif; fill: #24292f }
.title { font-size: 15px; font-weight: bold }
.small { font-size: 11px; fill: #57606a }
.head, .name.ours, .value.ours { font-weight: bold }
.ground { fill: #ffffff; stroke: #d0d7de }
.axis { stroke: #d0d7de }
.bar.ours { fill: #d1541b }
.bar.floor { fill: #8c959f }
.bar.remote { fill: #2f81c9 }
.bar.player { fill: #9cc3ea }
@media (prefers-color-scheme: dark) {
text { fill: #e6edf3 }
.small { fill: #9da7b3 }
.ground { fill: #0d1117; stroke: #30363d }
.axis { stroke: #484f58 }
.bar.ours { fill: #f0883e }
.bar.floor { fill: #7d8590 }
.bar.remote { fill: #58a6ff }
.bar.player { fill: #35608f }
}
"""


def css_class(kind: str) -> str:
    return kind.split()[0]


def panel(left: int, title: str, unit: str, values: dict[Program, float], places: int) -> list[str]:
    longest = max([*values.values(), 1e-9])
    bottom = TOP + ROW * len(values)
    parts = [f'<text x="{left}" y="{TOP - 24}" class="head">{escape(title)}</text>',
             f'<text x="{left}" y="{TOP - 9}" class="small">{escape(unit)}</text>',
             f'<line x1="{left - 0.5}" y1="{TOP - 2}" x2="{left - 0.5}" y2="{bottom}" class="axis"/>']
    for row, (program, value) in enumerate(values.items()):
        y = TOP + row * ROW + (ROW - BAR_HEIGHT) / 2
        width = max(value / longest * BAR, LEAST_BAR) if value > 0 else 0
        kind = css_class(program.kind)
        parts.append(f'<rect x="{left}" y="{y:g}" width="{width:.1f}" height="{BAR_HEIGHT}" class="bar {kind}"/>'
                     f'<text x="{left + width + 5:.1f}" y="{y + 10:g}" class="value {kind}">{cell(value, places)}</text>')
    return parts


def legend(kinds: list[str], y: int) -> list[str]:
    parts, x = [], EDGE
    for kind in kinds:
        parts.append(f'<rect x="{x}" y="{y - 10}" width="{BAR_HEIGHT}" height="{BAR_HEIGHT}" '
                     f'class="bar {css_class(kind)}"/><text x="{x + 18}" y="{y}" class="small">{WORDS[kind]}</text>')
        x += 42 + 6 * len(WORDS[kind])
    return parts


def chart(scores: dict[Program, Score], caption: str) -> str:
    def values(read: object) -> dict[Program, float]:
        return {program: read(score) for program, score in scores.items()}

    panels = [("First pixel", "milliseconds", values(lambda score: score.pixel), 0),
              ("Private memory", "MiB", values(lambda score: score.private), 1),
              ("Paused: wake-ups", "a second", values(lambda score: score.paused.switches), 1),
              ("Paused: processor", "% of a core", values(lambda score: score.paused.load), 2)]
    width = EDGE + NAMES + (BAR + VALUE + GAP) * len(panels)
    bottom = TOP + ROW * len(scores)
    height = bottom + LEGEND + 8
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}">',
             f"<title>What Tunedeck costs beside other programs: {escape(caption)}</title>", f"<style>{STYLE}</style>",
             f'<rect x="0.5" y="0.5" width="{width - 1}" height="{height - 1}" rx="6" class="ground"/>',
             f'<text x="{EDGE}" y="26" class="title">What a window costs</text>',
             f'<text x="{EDGE}" y="43" class="small">{escape(caption)}</text>']
    parts += [f'<text x="{EDGE + NAMES - 10}" y="{TOP + row * ROW + 14}" text-anchor="end" '
              f'class="name {css_class(program.kind)}">{escape(program.name)}</text>'
              for row, program in enumerate(scores)]
    for index, (title, unit, panel_values, places) in enumerate(panels):
        parts += panel(EDGE + NAMES + index * (BAR + VALUE + GAP), title, unit, panel_values, places)
    parts += legend([kind for kind in KINDS if any(program.kind == kind for program in scores)], bottom + LEGEND - 8)
    return "\n".join([*parts, "</svg>", ""])


BEGIN, END = "<!-- scoreboard: tools/benchmarks/scoreboard writes this -->", "<!-- end of scoreboard -->"


def with_block(page: str, block: str) -> str:
    """The page with `block` between its two marks. ValueError if they are missing."""
    before, begin, rest = page.partition(BEGIN)
    _, end, after = rest.partition(END)
    if not begin or not end:
        raise ValueError(f"The page has no {BEGIN} and {END}")
    return f"{before}{BEGIN}\n{block.strip()}\n{END}{after}"
