#include "models/note_lines.h"

#include <algorithm>

std::vector<NoteLine> fitNote(Canvas& canvas, const QString& note, double room, double points) {
    // A note too wide for the drawing is first set a little smaller, never
    // below 8 points; if that is not enough it goes on over more lines,
    // broken between its words, preferably where two blanks part the
    // English from the Greek. The words themselves stay as they are.
    constexpr double kSmallest = 8.0;
    auto fits = [&](const QString& text, double size) {
        canvas.setFontSize(size);
        return canvas.textWidth(text) <= room;
    };
    if (fits(note, points)) return {{note, points}};
    if (fits(note, std::min(points, kSmallest))) return {{note, std::min(points, kSmallest)}};
    std::vector<NoteLine> lines;
    QString rest = note;
    while (!rest.isEmpty() && !fits(rest, points)) {
        // The longest head that fits, ending at a blank (a double blank if
        // one lies in its second half).
        qsizetype cut = -1, wide = -1;
        for (qsizetype k = 1; k < rest.size(); ++k) {
            if (rest[k] != QLatin1Char(' ') || rest[k - 1] == QLatin1Char(' ')) continue;
            if (!fits(rest.left(k), points)) break;
            cut = k;
            if (k + 1 < rest.size() && rest[k + 1] == QLatin1Char(' ')) wide = k;
        }
        if (cut < 0) break;  // one word wider than the drawing: it stays whole
        if (wide > cut / 2) cut = wide;
        lines.push_back({rest.left(cut), points});
        qsizetype next = cut;
        while (next < rest.size() && rest[next] == QLatin1Char(' ')) ++next;
        rest = rest.mid(next);
    }
    if (!rest.isEmpty()) lines.push_back({rest, points});
    canvas.setFontSize(points);
    return lines;
}
