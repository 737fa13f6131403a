#pragma once
#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QRect>

#include <vector>

// "epiloges": the index of refraction and the speeds of light in two media.
// A menu bar over a short summary; its commands set the index and the angle
// of the control panel, which the wave screen draws with, and start and stop
// the wave screen's timer. The summary shows the panel's values.
class Epiloges : public QMainWindow {
    Q_OBJECT
public:
    Epiloges();

    QMenu* repetition;    // EPANALHPSH
    QAction* deiktisdia;  // DEIKTHS: asks for the index
    QAction* changev;     // METAVOLH V: the speed changes at the boundary
    QAction* samev;       // IDIA V: the same speed in both media
    QAction* aktina;      // AKTINA: the ray, straight on
    QAction* Endof;       // END OFF
    QAction* Telos;       // TELOS
    QLabel* summary;      // the index and the speeds now in use

    static constexpr double kBaseLength = 200.0;  // field units, the rays' vertical reach
    static constexpr int kStartAngle = 30;         // degrees, lowered by one before the waves start
    // The index and the angle in use: the panel's.
    double index() const;
    double incidenceDegrees() const;
    // The speed in the second medium over that in the first: 1/n.
    double secondSpeed() const { return 1.0 / index(); }
    // The index METAVOLH V brings back: the one typed, or the one in use
    // when IDIA V made the speeds equal. The panel keeps it, and whether
    // the speeds are the same, so that no other window can contradict the
    // check marks here.
    double bendingIndex() const;

    void Form_Load();
    void deiktisdia_Click();
    void changev_Click();
    void samev_Click();
    void aktina_Click();
    void Endof_Click();
    void Telos_Click();

    // The summary line and the check marks, from the panel's values; the
    // panel calls it when they change.
    void writeSummary();
    // Shows the screen where it covers least of what the pupil uses next:
    // the wave screen's title bar and menus first, then the notes printed
    // on its picture and the panel's figures, then the rest of the wave
    // picture, the panel and the corpuscles.
    void showBesideWaves();
    // Those rectangles, in screen coordinates, most important first.
    static std::vector<QRect> areasToKeepClear();

private:
    void drawOnWaveScreen();

    QActionGroup* speedGroup_;
};
