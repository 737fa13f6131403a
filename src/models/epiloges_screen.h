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
// that the wave screen draws with, and start and stop the wave screen's
// animation. The summary shows the values in use.
class Epiloges : public QMainWindow {
    Q_OBJECT
public:
    Epiloges();

    static constexpr double kBaseLength = 200.0;  // field units, the rays' vertical reach
    static constexpr int kStartAngle = 30;        // degrees, lowered by one before the waves start
    // The index and the angle in use: the interpretation's shared ones.
    double index() const;
    double incidenceDegrees() const;
    // The speed in the second medium over that in the first: 1/n.
    double secondSpeed() const { return 1.0 / index(); }

    void Form_Load();
    void deiktisdia_Click();
    void changev_Click();
    void samev_Click();
    void aktina_Click();
    void Endof_Click();
    void Telos_Click();

    // Shows the screen where it covers least of what the pupil uses next:
    // the wave screen's title bar and menus first, then the notes printed
    // on its picture and the panel's figures, then the rest of the wave
    // picture, the panel and the corpuscles.
    void showBesideWaves();
    // Those rectangles, in screen coordinates, most important first.
    static std::vector<QRect> areasToKeepClear();

private:
    void createMenus();
    void drawOnWaveScreen();
    // The summary line and the check marks, from the shared values; they
    // follow every change of them. The shared state keeps whether the speeds
    // are the same, so that no other window can contradict the check marks.
    void writeSummary();

    QMenu* repetition;    // EPANALHPSH
    QAction* deiktisdia;  // DEIKTHS: asks for the index
    QAction* changev;     // METAVOLH V: the speed changes at the boundary
    QAction* samev;       // IDIA V: the same speed in both media
    QAction* aktina;      // AKTINA: the ray, straight on
    QAction* Endof;       // END OFF
    QAction* Telos;       // TELOS
    QLabel* summary;      // the index and the speeds now in use

    QActionGroup* speedGroup_;
};
