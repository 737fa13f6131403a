// The still pictures of the wave screen: the two media, the rays, the
// notes printed in the corner and Brewster's mark.
#include <algorithm>
#include <cmath>

#include "canvas/palette.h"
#include "canvas/qt_format.h"
#include "models/energy_shares.h"
#include "models/model_texts.h"
#include "models/note_lines.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "ui/forms.h"

void Rixo::applyField() {
    const kymatiko::Field f = field();
    canvas->scale(0.0, f.height, f.width, 0.0);
    moving->setGeometry(canvas->rect());
    Shape1->setCentre(toWidget(f.hit()));
}

QPointF Rixo::toWidget(kymatiko::Point p) const { return canvas->toLogical(p.x, p.y); }

QRect Rixo::keptClear(kymatiko::Point corner, kymatiko::Point opposite) const {
    // A few pixels of margin, so that no front ends touching a letter.
    return QRectF(toWidget(corner), toWidget(opposite)).normalized().adjusted(-3, -3, 3, 3).toAlignedRect();
}

void Rixo::drawMedia() {
    const kymatiko::Field f = field();
    canvas->cls();
    canvas->filledBox(0.0, f.boundary(), f.width, f.height, palette::waves::upperMedium);
    canvas->filledBox(0.0, 0.0, f.width, f.boundary(), palette::waves::lowerMedium);
    canvas->setDrawWidth(2);
    canvas->line(0.0, f.boundary(), f.width, f.boundary(), palette::black);
    canvas->setDrawWidth(1);
    canvas->setDrawStyle(DrawStyle::Dash);
    canvas->line(f.width / 2.0, 0.0, f.width / 2.0, f.height, palette::waves::normal);
    canvas->setDrawStyle(DrawStyle::Solid);
}

void Rixo::drawRays(const kymatiko::Refraction& r) {
    paths_ = kymatiko::rayPaths(field(), r);
    const kymatiko::Fresnel f = kymatiko::fresnel(r, index());
    auto polyline = [this](const std::vector<kymatiko::Point>& path, const QColor& colour) {
        if (path.size() < 2) return;
        canvas->line(path.front().x, path.front().y, path.back().x, path.back().y, colour);
    };
    canvas->setDrawWidth(2);
    polyline(paths_.incident, palette::waves::incident);
    if (std::fabs(f.rs) >= kymatiko::kVisibleReflection) polyline(paths_.reflected, palette::waves::reflected);
    polyline(paths_.refracted, palette::waves::refracted);
    canvas->setDrawWidth(1);
}

QRect Rixo::printNotes(const QStringList& notes) {
    const kymatiko::Field f = field();
    canvas->setForeColor(palette::black);
    // Bottom left: the light comes from the upper left and leaves to the
    // lower right, so this corner is clear of the fronts of the incident and
    // reflected waves. The refracted fronts can sweep the whole lower medium
    // and are kept off the notes. On a narrow window the longer notes reach
    // past the normal; the refracted ray then runs under them rather than
    // being cut short, which would lose the ray of the ray picture; a light
    // rim round the letters keeps them readable over it.
    const double left = f.width * 0.01;
    const double bottom = f.height * 0.01;
    const double room = f.width * 0.98;
    const double points = canvas->fontSize();
    std::vector<NoteLine> lines;
    for (const QString& note : notes) {
        const std::vector<NoteLine> fitted = fitNote(*canvas, note, room, points);
        lines.insert(lines.end(), fitted.begin(), fitted.end());
    }
    double top = bottom;
    for (const NoteLine& l : lines) {
        canvas->setFontSize(l.points);
        top += canvas->textHeight();
    }
    double right = left;
    double y = top;
    canvas->setTextHalo(palette::waves::lowerMedium);
    for (const NoteLine& l : lines) {
        canvas->setFontSize(l.points);
        canvas->setCurrentX(left);
        canvas->setCurrentY(y);
        canvas->print(l.text);
        right = std::max(right, left + canvas->textWidth(l.text));
        y -= canvas->textHeight();
    }
    canvas->setTextHalo(QColor());
    canvas->setFontSize(points);
    return keptClear({left, top}, {right, bottom});
}

QRect Rixo::drawBrewsterMark() {
    const std::optional<double> brewster = kymatiko::brewsterAngleDegrees(index());
    if (!brewster) return {};
    const kymatiko::Field f = field();
    const double b = kymatiko::radians(*brewster);
    const double length = 0.3 * std::min(f.width, f.height);
    const kymatiko::Point end{f.hit().x - length * std::sin(b), f.hit().y + length * std::cos(b)};
    canvas->setDrawStyle(DrawStyle::Dash);
    canvas->line(f.hit().x, f.hit().y, end.x, end.y, palette::waves::brewster);
    canvas->setDrawStyle(DrawStyle::Solid);
    const QString mark = texts::brewsterMark();
    const double x = end.x - canvas->textWidth(mark) - f.width * 0.005;
    const double y = end.y + canvas->textHeight(mark);
    canvas->setForeColor(palette::waves::brewster);
    canvas->setCurrentX(x);
    canvas->setCurrentY(y);
    canvas->print(mark);
    canvas->setForeColor(palette::black);
    return keptClear({x, y}, {x + canvas->textWidth(mark), y - canvas->textHeight(mark)});
}

void Rixo::summarise(const kymatiko::Refraction& r) {
    QStringList lines{QStringLiteral("Waves at the boundary: index n = %1, incidence %2°, %3.")
                          .arg(fmt(index(), "0.00"), fmt(incidenceDegrees(), "0"),
                               r.totalReflection ? QStringLiteral("total reflection")
                                                 : QStringLiteral("refraction ") +
                                                       fmt(kymatiko::degrees(r.refraction), "0.00") + "°")};
    lines << texts::energyLines(r, index());
    canvas->setSummary(lines.join(QLatin1Char('\n')));
}

void Rixo::writePanelFigures() {
    form<Rixotext>().showFigures({texts::CriticalWording::RayRoutine, texts::ShareWording::Percent, false});
}

void Rixo::DrawRaysAtBoundary() {
    picture_ = Picture::Rays;
    applyField();
    drawMedia();
    const kymatiko::Refraction r = refraction();
    drawRays(r);
    QRegion keepClear = drawBrewsterMark();
    keepClear += printNotes(QStringList{texts::speedsLine(index()), texts::anglesPanel(incidenceDegrees(), r)}
                            << texts::energyLines(r, index()));
    moving->setKeepClear(keepClear);
    summarise(r);
    writePanelFigures();
    pulse_ = 0;
    moving->setLayer(1, {});
    updateFronts();
}

void Rixo::drawRayPicture() {
    picture_ = Picture::RayPicture;
    applyField();
    drawMedia();
    const kymatiko::Refraction r = refraction();
    drawRays(r);
    const kymatiko::Shares s = kymatiko::shares(kymatiko::fresnel(r, index()));
    QStringList notes{texts::speedsLine(index()), texts::rayPictureAngles(incidenceDegrees(), r)};
    if (const auto c = kymatiko::criticalAngleDegrees(index()))
        notes << texts::criticalAngle(texts::CriticalWording::RayPicture, *c);
    notes << texts::reflectedShare(texts::ShareWording::Plain, s.reflected)
          << texts::refractedShare(texts::ShareWording::Plain, s.refracted) << texts::anglesWaves(incidenceDegrees(), r)
          << texts::energyLines(r, index());
    QRegion keepClear = drawBrewsterMark();
    keepClear += printNotes(notes);
    moving->setKeepClear(keepClear);
    summarise(r);
    moving->clearAll();
}

void Rixo::drawStraightRay() {
    picture_ = Picture::StraightRay;
    applyField();
    drawMedia();
    // The line through the point of incidence with the slope of the
    // incident ray, from edge to edge: what light would do if nothing
    // changed at the boundary.
    const kymatiko::Field f = field();
    const double si = std::sin(kymatiko::radians(incidenceDegrees())),
                 ci = std::cos(kymatiko::radians(incidenceDegrees()));
    const kymatiko::Point from = kymatiko::edgeOfField(f, f.hit(), -si, ci);
    const kymatiko::Point to = kymatiko::edgeOfField(f, f.hit(), si, -ci);
    canvas->setDrawWidth(2);
    canvas->line(from.x, from.y, to.x, to.y, palette::waves::incident);
    canvas->setDrawWidth(1);
    const kymatiko::Refraction straight = kymatiko::refract(kymatiko::radians(incidenceDegrees()), 1.0);
    moving->setKeepClear(printNotes({texts::rayPictureAngles(incidenceDegrees(), straight)}));
    canvas->setSummary(
        QStringLiteral("The ray straight on through the boundary, incidence %1°.").arg(fmt(incidenceDegrees(), "0")));
    moving->clearAll();
}

void Rixo::redraw() {
    switch (picture_) {
    case Picture::Rays: {
        const int pulse = pulse_;
        DrawRaysAtBoundary();
        pulse_ = pulse;  // a resize does not start the pulse again
        updatePulse();
        break;
    }
    case Picture::RayPicture: drawRayPicture(); break;
    case Picture::StraightRay: drawStraightRay(); break;
    }
}

std::vector<QRect> Rixo::notesOnScreen() const {
    std::vector<QRect> areas;
    for (const QRect& r : moving->keepClear()) areas.emplace_back(moving->mapToGlobal(r.topLeft()), r.size());
    return areas;
}

QRect Rixo::drawingOnScreen() const { return {canvas->mapToGlobal(QPoint()), canvas->size()}; }
