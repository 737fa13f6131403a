// The wave screens show how the energy divides beside the amplitude figures,
// with Brewster's angle, for whatever index and angle the windows share; and
// the moving fronts never run through the notes printed on the wave picture.
#include <QtTest>

#include <QImage>
#include <QPainter>

#include <cmath>

#include "ui/forms.h"
#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "ui/window_placement.h"
#include "models/epiloges_screen.h"
#include "models/model_texts.h"
#include "models/rixo_screen.h"
#include "models/rixotext_screen.h"
#include "test_support.h"
#include "interpretation_screens_support.h"

namespace {

// The energy shares worked out here from the Fresnel amplitudes in their
// sine and tangent form, the way a textbook writes them, in per cent.
struct Expected {
    QString rs, ts, rp, tp;
};

Expected textbook(double n, double incidenceDegrees) {
    const double i = incidenceDegrees * M_PI / 180.0;
    const double r = std::asin(std::sin(i) / n);
    const double rs = std::sin(i - r) / std::sin(i + r);
    const double rp = std::tan(i - r) / std::tan(i + r);
    return {fmt(100.0 * rs * rs, "0.00"), fmt(100.0 - 100.0 * rs * rs, "0.00"), fmt(100.0 * rp * rp, "0.00"),
            fmt(100.0 - 100.0 * rp * rp, "0.00")};
}

QString line(char polarisation, const QString& reflected, const QString& refracted) {
    return QStringLiteral("ENERGY %1  Ενέργεια %1:  R = %2 %   T = %3 %")
        .arg(QChar::fromLatin1(polarisation))
        .arg(reflected, refracted);
}

// The pixels of the moving layer, painted alone on a transparent image as
// sharp as the drawing under it (two pixels a point on a screen at 200 %).
QImage movingAlone(MovingLayer& layer, qreal ratio) {
    QImage image((QSizeF(layer.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    layer.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

}  // namespace

class TestWaveEnergy : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { installFontSubstitutions(); }

    // Glass at 30°: the amplitude figures stay as they are, and the energy
    // lines beside them add up to 100 on the panel and on the wave picture.
    void energyBesideTheAmplitudes() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        QVERIFY(s.panel.Label5->text().endsWith(QStringLiteral("24.04")));
        QVERIFY(s.panel.Label4->text().endsWith(QStringLiteral("75.96")));
        const Expected e = textbook(1.5, 30.0);
        QCOMPARE(s.panel.energyS->text(), line('s', QStringLiteral("5.78"), QStringLiteral("94.22")));
        QCOMPARE(s.panel.energyP->text(), line('p', e.rp, e.tp));
        QCOMPARE(s.panel.brewster->text(), QStringLiteral("BREWSTER ANGLE  Γωνία Brewster θB = 56.31°  (p: R = 0)"));
        QVERIFY(s.panel.energyS->isVisibleTo(&s.panel) && s.panel.brewster->isVisibleTo(&s.panel));
        const QStringList printed = s.rixo.canvas->printedTexts();
        // The ray routine's own angles keep their two blanks before REFRACTION.
        QVERIFY(printed.contains(QStringLiteral("INCIDENCE Πρόσπτωσης= 30  REFRACTION διάθλασης =19.47°")));
        for (const QLabel* l : {s.panel.energyS, s.panel.energyP, s.panel.brewster})
            QVERIFY2(printed.contains(l->text()), qPrintable(l->text()));
        QVERIFY(printed.contains(texts::brewsterMark()));
        // Screen readers hear the same figures.
        QVERIFY(s.rixo.canvas->summary().contains(s.panel.energyP->text()));
        QVERIFY(s.panel.accessibleDescription().contains(s.panel.energyS->text()));
        // The ray picture prints them under the Parts' figures too.
        s.rixo.aktina_Click();
        QVERIFY(s.rixo.canvas->printedTexts().contains(s.panel.energyS->text()));
    }

    // At Brewster's angle no p light is reflected; away from it some is.
    // Beyond the critical angle everything is reflected, for both kinds.
    void brewsterAndTotalReflection() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.panel.prosptosi->setValue(56);  // θB = 56.31° for n = 1.5
        QVERIFY(s.panel.energyP->text().contains(QStringLiteral("R = 0.00 %   T = 100.00 %")));
        QVERIFY(!s.panel.energyS->text().contains(QStringLiteral("R = 0.00 %")));
        s.rixo.okitis2_Click();  // c=2: Brewster moves to atan 2
        QCOMPARE(s.panel.brewster->text(), QStringLiteral("BREWSTER ANGLE  Γωνία Brewster θB = 63.43°  (p: R = 0)"));
        const Expected e = textbook(2.0, 56.0);
        QCOMPARE(s.panel.energyS->text(), line('s', e.rs, e.ts));
        QCOMPARE(s.panel.energyP->text(), line('p', e.rp, e.tp));
        s.rixo.okitismiso_Click();  // into the less dense medium, 56° is past 30°
        const QString all = QStringLiteral("R = 100.00 %   T = 0.00 %");
        QVERIFY(s.panel.energyS->text().endsWith(all) && s.panel.energyP->text().endsWith(all));
        QVERIFY(s.rixo.canvas->printedTexts().contains(s.panel.energyS->text()));
        QCOMPARE(s.panel.brewster->text(), QStringLiteral("BREWSTER ANGLE  Γωνία Brewster θB = 26.57°  (p: R = 0)"));
        // The Parts' amplitude figure says the same in its own way.
        QVERIFY(s.panel.Label4->text().endsWith(QStringLiteral("0.00")));
    }

    // However the index and the angle send the fronts, none is painted over
    // the notes in the bottom left corner or over Brewster's mark. The notes
    // are found in the drawing itself: the dark pixels of the lower medium
    // left of the normal.
    void frontsKeepOffTheNotes() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.TIMERSTART_Click();
        bool frontsReachTheCorner = false;
        for (double n : {0.5, 1.0, 1.5, 2.5}) {
            for (int angle : {0, 30, 60, 85, 89}) {
                s.panel.setIndex(n);
                s.panel.setIncidence(angle);
                for (int tick = 0; tick < 7; ++tick) s.rixo.Timer1_Timer();
                const QImage drawing = s.rixo.canvas->image();
                const double ratio = drawing.devicePixelRatio();
                const QImage moving = movingAlone(*s.rixo.moving, ratio);
                QCOMPARE(moving.size(), drawing.size());
                const int boundary = static_cast<int>((s.rixo.canvas->height() / 2 + 4) * ratio);
                const int normal = static_cast<int>((s.rixo.canvas->width() / 2 - 4) * ratio);
                int textPixels = 0;
                for (int y = boundary; y < drawing.height(); ++y)
                    for (int x = 0; x < normal; ++x) {
                        const QColor c = drawing.pixelColor(x, y);
                        if (c.red() > 90 || c.green() > 90 || c.blue() > 90) continue;
                        ++textPixels;
                        QVERIFY2(qAlpha(moving.pixel(x, y)) == 0,
                                 qPrintable(QStringLiteral("front over the notes at %1,%2 of %3x%4 (n %5, %6°)")
                                                .arg(x).arg(y).arg(drawing.width()).arg(drawing.height()).arg(n).arg(angle)));
                    }
                QVERIFY(textPixels > 100);
                const QRect notes = s.rixo.moving->keepClear().boundingRect();
                for (const MovingLayer::Stroke& stroke : s.rixo.moving->layer(0))
                    for (const QLineF& l : stroke.lines)
                        if (QRectF(l.p1(), l.p2()).normalized().intersects(notes)) frontsReachTheCorner = true;
            }
        }
        // Without the clearing the test would mean nothing: some fronts do
        // sweep the corner.
        QVERIFY(frontsReachTheCorner);
    }

    // Every line printed on the wave screen stands wholly inside the drawing
    // at a readable size, however narrow the window the screen is given:
    // a note too long for it goes on over a second line, word for word.
    void everyNoteFitsTheDrawing() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        bool wrapped = false;
        for (const QSize size : {QSize(640, 520), QSize(450, 360), QSize(340, 300)}) {
            s.rixo.resize(size);
            QCoreApplication::processEvents();
            const QRectF drawing = QRectF(s.rixo.canvas->rect()).adjusted(-0.5, -0.5, 0.5, 0.5);
            for (double n : {0.5, 1.5, 2.0}) {
                for (int angle : {0, 30, 85}) {
                    s.panel.setIndex(n);
                    s.panel.setIncidence(angle);
                    const QStringList pictures{QStringLiteral("waves"), QStringLiteral("ray"), QStringLiteral("straight")};
                    for (const QString& picture : pictures) {
                        if (picture == pictures[0]) s.rixo.TIMERSTART_Click();
                        else if (picture == pictures[1]) s.rixo.aktina_Click();
                        else s.rixo.drawStraightRay();
                        const QString where = QStringLiteral(" (%1x%2, n %3, %4°, %5)")
                                                  .arg(size.width()).arg(size.height()).arg(n).arg(angle).arg(picture);
                        QString all;
                        for (const Canvas::DrawnText& t : s.rixo.canvas->drawnTexts()) {
                            QVERIFY2(drawing.contains(t.box), qPrintable(t.text + where));
                            QVERIFY2(t.points >= 8.0, qPrintable(t.text + where));
                            all += t.text + QLatin1Char(' ');
                        }
                        if (n == 0.5 && angle == 85 && picture != pictures[2]) {
                            const QString note = texts::anglesPanel(85, kymatiko::refract(kymatiko::radians(85), 0.5));
                            QVERIFY2(all.simplified().contains(note.simplified()), qPrintable(all + where));
                            wrapped = wrapped || !s.rixo.canvas->printedTexts().contains(note);
                        }
                    }
                }
            }
        }
        QVERIFY(wrapped);  // the narrow windows did need a second line
    }

    // On a narrow window the refracted ray of the ray picture runs through
    // the notes: it is still drawn there, and a light rim round the letters
    // keeps it from touching them.
    void rayThroughTheNotesLeavesThemReadable() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.resize(340, 300);
        QCoreApplication::processEvents();
        s.panel.setIndex(1.5);
        s.panel.setIncidence(30);
        s.rixo.aktina_Click();
        const QImage drawing = s.rixo.canvas->image();
        const double ratio = drawing.devicePixelRatio();
        auto blue = [](QColor c) { return c.blue() > 150 && c.red() < 100 && c.green() < 100; };
        auto dark = [](QColor c) { return c.red() < 90 && c.green() < 90 && c.blue() < 90; };
        int rayInNotes = 0, crossedNotes = 0;
        for (const Canvas::DrawnText& t : s.rixo.canvas->drawnTexts()) {
            const QRect box = QRectF(t.box.topLeft() * ratio, t.box.size() * ratio).toAlignedRect() & drawing.rect();
            int rayHere = 0;
            for (int y = box.top() + 1; y < box.bottom(); ++y)
                for (int x = box.left() + 1; x < box.right(); ++x) {
                    if (blue(drawing.pixelColor(x, y))) ++rayHere;
                    if (!dark(drawing.pixelColor(x, y))) continue;
                    for (const QPoint n : {QPoint(x - 1, y), QPoint(x + 1, y), QPoint(x, y - 1), QPoint(x, y + 1)})
                        QVERIFY2(!blue(drawing.pixelColor(n)), qPrintable(t.text));
                }
            rayInNotes += rayHere;
            if (rayHere > 0) ++crossedNotes;
        }
        QVERIFY(crossedNotes > 0);  // the ray does cross the notes at this size
        QVERIFY(rayInNotes > 10);   // and is still seen there
    }

    // INDEX AND VELOCITIES opens where it hides neither the notes on the
    // wave picture nor the figures of the panel.
    void indexScreenKeepsOffTheNotesAndFigures() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        s.rixo.TIMERSTART_Click();
        QCoreApplication::processEvents();
        s.rixo.epiloges_Click();
        QCoreApplication::processEvents();
        const Epiloges& e = form<Epiloges>();
        QVERIFY(e.isVisible());
        const QRect window = outerRect(e);
        QVERIFY(!s.rixo.moving->keepClear().isEmpty());
        for (const QRect& note : s.rixo.moving->keepClear()) {
            const QRect onScreen(s.rixo.moving->mapToGlobal(note.topLeft()), note.size());
            QVERIFY2(!window.intersects(onScreen), qPrintable(QStringLiteral("over the notes")));
        }
        for (const QLabel* figure : {s.panel.Label5, s.panel.Label4, s.panel.Label1, s.panel.energyS, s.panel.energyP,
                                     s.panel.brewster}) {
            if (!figure->isVisible()) continue;
            const QRect onScreen(figure->mapToGlobal(QPoint()), figure->size());
            QVERIFY2(!window.intersects(onScreen), qPrintable(figure->text()));
        }
        // Nor the wave screen's title bar and menus, which come next.
        QVERIFY2(!window.intersects(titleBarAndMenus(s.rixo)), "over the wave screen's menus");
    }
};

QTEST_MAIN(TestWaveEnergy)
#include "test_wave_energy.moc"
