#include "canvas/fonts.h"

#include <QFontDatabase>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "canvas/presentation_scale.h"

namespace {

struct Mapping {
    const char* requested;
    QStringList candidates;  // first installed one wins
};

const QStringList& sansFamilies() {
    static const QStringList families{"Liberation Sans", "DejaVu Sans"};
    return families;
}

const std::vector<Mapping>& mappings() {
    static const std::vector<Mapping> table{
        {"arial", sansFamilies()},
        {"arial greek", sansFamilies()},
        {"tahoma", {"DejaVu Sans", "Liberation Sans"}},
        {"swis721 win95bt", sansFamilies()},
        {"symbol", {"DejaVu Sans", "Liberation Sans"}},
        {"ms sans serif", sansFamilies()},
        {"times new roman", {"Liberation Serif", "DejaVu Serif"}},
        {"times new roman greek", {"Liberation Serif", "DejaVu Serif"}},
        {"courier new", {"Liberation Mono", "DejaVu Sans Mono"}},
    };
    return table;
}

QString firstInstalled(const QStringList& candidates) {
    const QStringList installed = QFontDatabase::families();
    for (const QString& family : candidates)
        if (installed.contains(family, Qt::CaseInsensitive)) return family;
    return candidates.isEmpty() ? QString() : candidates.front();
}

}  // namespace

namespace {

QString resolveFamily(const QString& requestedName) {
    const QString key = requestedName.trimmed().toLower();
    for (const Mapping& m : mappings())
        if (key == QLatin1String(m.requested)) return firstInstalled(m.candidates);
    // Unknown names: if installed, use them; otherwise a Greek-capable sans.
    if (QFontDatabase::families().contains(requestedName, Qt::CaseInsensitive)) return requestedName;
    return firstInstalled(sansFamilies());
}

}  // namespace

QString installedFamilyFor(const QString& requestedName) {
    // Every print and every text measurement asks for its font; listing the
    // installed families each time would cost more than the drawing. The
    // installed fonts do not change while the program runs.
    static QHash<QString, QString> resolved;
    auto it = resolved.constFind(requestedName);
    if (it == resolved.constEnd()) it = resolved.insert(requestedName, resolveFamily(requestedName));
    return *it;
}

void installFontSubstitutions() {
    for (const Mapping& m : mappings()) {
        const QString family = firstInstalled(m.candidates);
        const QString name = QString::fromLatin1(m.requested);
        QFont::removeSubstitutions(name);
        QFont::insertSubstitution(name, family);
    }
}

namespace {

// The Windows face each role was designed with; the table above maps it to
// an installed family.
const char* requestedFaceFor(FontRole role) {
    switch (role) {
    case FontRole::Caption: return "Arial Greek";
    case FontRole::Panel: return "Tahoma";
    case FontRole::Reading: return "Times New Roman Greek";
    case FontRole::Table: return "Courier New";
    }
    return "Arial Greek";
}

}  // namespace

QString roleFamily(FontRole role) { return installedFamilyFor(QString::fromLatin1(requestedFaceFor(role))); }

namespace {
double& scaleHeld() {
    static double scale = 1.0;
    return scale;
}
}  // namespace

double presentationScale() { return scaleHeld(); }

QSizeF shownBoxSize(QSizeF box, QSizeF texts) { return box + texts * (presentationScale() - 1.0); }

void setPresentationScale(double factor) {
    if (std::isfinite(factor)) scaleHeld() = std::clamp(factor, 1.0, 2.0);
}

QFont designedRoleFont(FontRole role, double pointSize, bool bold) {
    // Drawings ask for their font at every text they print and measure. A
    // font made afresh looks its face up again on first use; a copy of one
    // kept shares the face already found. The faces do not change while the
    // program runs. Kept on the heap for good: fonts must not be destroyed
    // after the application that loaded their faces.
    static auto* kept = new std::map<std::tuple<FontRole, double, bool>, QFont>;
    const double points = pointSize > 0 ? pointSize : 10.0;
    const auto key = std::make_tuple(role, points, bold);
    if (const auto it = kept->find(key); it != kept->end()) return it->second;
    if (kept->size() >= 256) kept->clear();  // sizes that grow and shrink without end
    QFont font(roleFamily(role));
    font.setPointSizeF(points);
    font.setBold(bold);
    return kept->emplace(key, font).first->second;
}

QFont roleFont(FontRole role, double pointSize, bool bold) {
    return designedRoleFont(role, (pointSize > 0 ? pointSize : 10.0) * presentationScale(), bold);
}
