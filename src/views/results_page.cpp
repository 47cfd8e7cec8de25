// The results as a page for a browser.
#include "platform/names/names.h"
#include "views/results_export.h"

namespace vantrel {

namespace {

// Nothing is fetched from anywhere, and nothing but what stands in the page is run.
constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Vantrel - Comparison Results</title>
<style>
:root { color-scheme: light dark; --line: #c8ccd2; --head: #eef1f5; --even: #f7f8fa;
  --Newer: #1c6e38; --Older: #8a4f04; --Same: #1f5597; --Orphan: #68409d; --Binary: #a82c24; }
@media (prefers-color-scheme: dark) { :root { --line: #4a505a; --head: #2a2f37; --even: #1c2026;
  --Newer: #66c98a; --Older: #eeb04e; --Same: #78b1f2; --Orphan: #bd9cf0; --Binary: #f58379; } }
body { font: 15px/1.4 system-ui, sans-serif; margin: 1.5em; }
h1 { font-size: 1.4em; }
dt { float: left; clear: left; width: 4em; }
dd { margin-left: 4em; overflow-wrap: anywhere; }
table { border-collapse: collapse; width: 100%; }
th, td { border: 1px solid var(--line); padding: 2px 8px; text-align: left; vertical-align: top; }
thead { position: sticky; top: 0; }
thead th { background: var(--head); }
th button { all: unset; cursor: pointer; font-weight: bold; display: block; width: 100%; }
th button:focus-visible { outline: 2px solid; }
th[aria-sort=ascending] button::after { content: " \25B2"; }
th[aria-sort=descending] button::after { content: " \25BC"; }
tbody tr:nth-child(even) { background: var(--even); }
td { overflow-wrap: anywhere; }
th { white-space: nowrap; }
tbody td:nth-child(2), tbody td:nth-child(6) { min-width: 11em; }
span { unicode-bidi: isolate; }
td.n { text-align: right; white-space: nowrap; }
td.d, td.t { white-space: nowrap; }
td.Newer { color: var(--Newer); } td.Older { color: var(--Older); }
td.Same, td.IdenticalFolder { color: var(--Same); }
td.Orphan, td.OrphanFolder { color: var(--Orphan); }
td.Binary, td.DifferentFolder { color: var(--Binary); }
</style>
</head>
<body>
<h1>Comparison Results</h1>
)";

constexpr std::string_view kTail = R"(</tbody>
</table>
<script>
"use strict";
const table = document.querySelector("table");
const order = new Intl.Collator(undefined, {numeric: true});
table.tHead.addEventListener("click", event => {
  const button = event.target.closest("button");
  if (!button) return;
  const head = button.parentNode, column = Number(head.dataset.column);
  const factor = head.getAttribute("aria-sort") === "ascending" ? -1 : 1;
  for (const sorted of table.querySelectorAll("th[aria-sort]")) sorted.removeAttribute("aria-sort");
  head.setAttribute("aria-sort", factor === 1 ? "ascending" : "descending");
  const rows = Array.from(table.tBodies[0].rows, row => {
    const cell = row.cells[column];
    return {row, value: cell.dataset.v || cell.textContent};
  });
  rows.sort((a, b) => (a.value === "") - (b.value === "") || factor * order.compare(a.value, b.value));
  for (const {row} of rows) table.tBodies[0].append(row);
});
</script>
</body>
</html>
)";

void WriteEscaped(std::string_view text, TextPieces& out) {
    for (;;) {
        const std::size_t plain = text.find_first_of("&<>\"'");
        out << text.substr(0, plain);
        if (plain == std::string_view::npos) return;
        switch (text[plain]) {
            case '&':
                out << "&amp;";
                break;
            case '<':
                out << "&lt;";
                break;
            case '>':
                out << "&gt;";
                break;
            case '"':
                out << "&quot;";
                break;
            default:
                out << "&#39;";
        }
        text.remove_prefix(plain + 1);
    }
}

// A name of whatever script and direction, which moves nothing beside it.
void WriteName(std::string_view name, TextPieces& out) {
    out << "<span dir=\"auto\">";
    WriteEscaped(DisplayName(name), out);
    out << "</span>";
}

void WriteHalf(const ShownHalf& half, const LocaleFormats& locale, TextPieces& out) {
    if (!half.shown) {
        out << "<td></td><td></td><td></td><td></td>";
        return;
    }
    out << "<td>";
    WriteName(half.name, out);
    out << "</td>";
    if (half.unknown) {
        out << "<td></td><td></td><td class=\"t\">Unknown</td>";
        return;
    }
    out << "<td class=\"n\" data-v=\"" << half.size.Whole() << "\">" << locale.Number(half.size) << "</td>";
    if (half.modified) {
        out << "<td class=\"d\" data-v=\"" << UtcText(*half.modified) << "\">";
        WriteEscaped(locale.DateTime(FileTimeToLocalFileTime(*half.modified)), out);
        out << "</td>";
    } else {
        out << "<td></td>";
    }
    const std::string_view type = ResultTypeText(half.type);
    out << "<td class=\"t " << type << "\">" << type << (half.incomplete ? " (incomplete)" : "") << "</td>";
}

void WriteColumn(int number, std::string_view caption, TextPieces& out) {
    out << "<th scope=\"col\" data-column=\"" << static_cast<std::int64_t>(number)
        << "\"><button type=\"button\">" << caption << "</button></th>";
}

void WriteTableHead(TextPieces& out) {
    constexpr std::string_view kCaptions[]{"Name", "Size", "Modified Date", "Type"};
    out << "<table>\n<thead>\n<tr><td></td><th scope=\"colgroup\" colspan=\"4\">Left</th>"
           "<th scope=\"colgroup\" colspan=\"4\">Right</th></tr>\n<tr>";
    int column = 0;
    WriteColumn(column++, "Sub-Folder", out);
    for ([[maybe_unused]] const Side side : kBothSides)
        for (const std::string_view caption : kCaptions) WriteColumn(column++, caption, out);
    out << "</tr>\n</thead>\n<tbody>\n";
}

}  // namespace

void WriteResultsPage(const ResultsReport& report, const LocaleFormats& locale, TextPieces& out) {
    constexpr PerSide<std::string_view> kSides{{"Left", "Right"}};
    out << kHead << "<dl>\n";
    for (const Side side : kBothSides) {
        out << "<dt>" << kSides[side] << "</dt><dd>";
        WriteName(report.folders[side], out);
        out << "</dd>\n";
    }
    out << "<dt>Date</dt><dd>";
    WriteEscaped(report.made, out);
    out << "</dd>\n</dl>\n";
    WriteTableHead(out);
    for (const ReportPart& part : report.parts) {
        part.ForEach([&](const ShownPair& pair) {
            out << "<tr><td>";
            if (!part.SubFolder().empty()) WriteName(part.SubFolder(), out);
            out << "</td>";
            for (const Side side : kBothSides) WriteHalf(pair[side], locale, out);
            out << "</tr>\n";
        });
    }
    out << kTail;
}

}  // namespace vantrel
