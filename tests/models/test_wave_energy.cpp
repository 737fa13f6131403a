// The wave screens show how the energy divides beside the amplitude figures,
// with Brewster's angle, for whatever index and angle the windows share; and
// the moving fronts never run through the notes printed on the wave picture.
#include <QImage>
#include <QPainter>
#include <QtTest>

#include <cmath>

#include "canvas/fonts.h"
#include "canvas/qt_format.h"
#include "interpretation_screens_support.h"
#include "models/epiloges_screen.h"
#include "models/model_texts.h"
#include "test_support.h"
#include "ui/window_placement.h"

namespace {

QString line(char polarisation, const char* reflected, const char* refracted) {
    return QString::asprintf("ENERGY %c  Ενέργεια %c:  R = %s %%   T = %s %%", polarisation, polarisation, reflected,
                             refracted);
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
    // lines beside them add up to 100, on the panel, on the wave picture
    // and for screen readers; at Brewster's angle no p light is reflected,
    // beyond the critical angle everything is.
    void energyBesideTheAmplitudes() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        QCOMPARE(text(s.panel, "energyS"), line('s', "5.78", "94.22"));
        QCOMPARE(text(s.panel, "energyP"), line('p', "2.52", "97.48"));
        QCOMPARE(text(s.panel, "brewster"), QStringLiteral("BREWSTER ANGLE  Γωνία Brewster θB = 56.31°  (p: R = 0)"));
        const QStringList printed = s.rixo.drawing().printedTexts();
        // The ray routine's own angles keep their two blanks before REFRACTION.
        QVERIFY(printed.contains(QStringLiteral("INCIDENCE Πρόσπτωσης= 30  REFRACTION διάθλασης =19.47°")));
        QVERIFY(printed.contains(texts::brewsterMark()));
        QVERIFY(s.rixo.drawing().summary().contains(text(s.panel, "energyP")));
        QVERIFY(s.panel.accessibleDescription().contains(text(s.panel, "energyS")));

        s.state.setIncidence(56);  // θB = 56.31° for n = 1.5
        QVERIFY(text(s.panel, "energyP").contains(QStringLiteral("R = 0.00 %   T = 100.00 %")));
        QVERIFY(!text(s.panel, "energyS").contains(QStringLiteral("R = 0.00 %")));
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
                s.state.setIndex(n);
                s.state.setIncidence(angle);
                for (int tick = 0; tick < 7; ++tick) s.rixo.Timer1_Timer();
                const QImage drawing = s.rixo.drawing().image();
                const double ratio = drawing.devicePixelRatio();
                const QImage moving = movingAlone(s.fronts, ratio);
                QCOMPARE(moving.size(), drawing.size());
                const int boundary = static_cast<int>((s.rixo.drawing().height() / 2 + 4) * ratio);
                const int normal = static_cast<int>((s.rixo.drawing().width() / 2 - 4) * ratio);
                int textPixels = 0;
                for (int y = boundary; y < drawing.height(); ++y)
                    for (int x = 0; x < normal; ++x) {
                        const QColor c = drawing.pixelColor(x, y);
                        if (c.red() > 90 || c.green() > 90 || c.blue() > 90) continue;
                        ++textPixels;
                        QVERIFY2(
                            qAlpha(moving.pixel(x, y)) == 0,
                            qPrintable(QString::asprintf("front over the notes at %d,%d (n %g, %d°)", x, y, n, angle)));
                    }
                QVERIFY(textPixels > 100);
                const QRect notes = s.fronts.keepClear().boundingRect();
                for (const MovingLayer::Stroke& stroke : s.fronts.layer(0))
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
    void everyNoteFitsTheDrawingAndStaysReadable() {
        ScreenTestScope scope;
        Screens s = openFromMenu();
        bool wrapped = false;
        for (const QSize size : {QSize(640, 520), QSize(450, 360), QSize(340, 300)}) {
            s.rixo.resize(size);
            QCoreApplication::processEvents();
            const QRectF drawing = QRectF(s.rixo.drawing().rect()).adjusted(-0.5, -0.5, 0.5, 0.5);
            for (double n : {0.5, 1.5, 2.0}) {
                for (int angle : {0, 30, 85}) {
                    s.state.setIndex(n);
                    s.state.setIncidence(angle);
                    for (const char* picture : {"waves", "ray", "straight"}) {
                        const bool straight = picture[0] == 's';
                        straight            ? s.rixo.drawStraightRay()
                        : picture[0] == 'r' ? s.rixo.aktina_Click()
                                            : s.rixo.TIMERSTART_Click();
                        const QString where = QString::asprintf(" (%dx%d, n %g, %d°, %s)", size.width(), size.height(),
                                                                n, angle, picture);
                        QString all;
                        for (const Canvas::DrawnText& t : s.rixo.drawing().drawnTexts()) {
                            QVERIFY2(drawing.contains(t.box), qPrintable(t.text + where));
                            QVERIFY2(t.points >= 8.0, qPrintable(t.text + where));
                            all += t.text + QLatin1Char(' ');
                        }
                        if (n == 0.5 && angle == 85 && !straight) {
                            const QString note = texts::anglesPanel(85, kymatiko::refract(kymatiko::radians(85), 0.5));
                            QVERIFY2(all.simplified().contains(note.simplified()), qPrintable(all + where));
                            wrapped = wrapped || !s.rixo.drawing().printedTexts().contains(note);
                        }
                    }
                }
            }
        }
        QVERIFY(wrapped);  // the narrow windows did need a second line

        // On the narrowest the refracted ray of the ray picture runs through
        // the notes: it is still drawn there, and a light rim round the
        // letters keeps it from touching them.
        s.state.setIndex(1.5);
        s.state.setIncidence(30);
        s.rixo.aktina_Click();
        const QImage drawing = s.rixo.drawing().image();
        const double ratio = drawing.devicePixelRatio();
        auto blue = [](QColor c) { return c.blue() > 150 && c.red() < 100 && c.green() < 100; };
        auto dark = [](QColor c) { return c.red() < 90 && c.green() < 90 && c.blue() < 90; };
        int rayInNotes = 0, crossedNotes = 0;
        for (const Canvas::DrawnText& t : s.rixo.drawing().drawnTexts()) {
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
        auto clear = [&](const QWidget& w, const QRect& r) {
            return !window.intersects(r.translated(w.mapToGlobal(QPoint())));
        };
        QVERIFY(!s.fronts.keepClear().isEmpty());
        for (const QRect& note : s.fronts.keepClear()) QVERIFY2(clear(s.fronts, note), "over the notes");
        for (const char* name : {"Label5", "Label4", "Label1", "energyS", "energyP", "brewster"}) {
            const QLabel& figure = child<QLabel>(s.panel, name);
            QVERIFY2(!figure.isVisible() || clear(figure, figure.rect()), qPrintable(figure.text()));
        }
        // Nor the wave screen's title bar and menus, which come next.
        QVERIFY2(!window.intersects(titleBarAndMenus(s.rixo)), "over the wave screen's menus");
    }
};

QTEST_MAIN(TestWaveEnergy)
#include "test_wave_energy.moc"
