#pragma once
#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>

// "epiloges": the index of refraction and the speeds of light in two media.
// A menu bar over a short summary; its commands set the index and the angle
// and draw on the wave screen, whose timer runs the waves.
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
    double index() const { return index_; }
    double incidenceDegrees() const { return incidence_; }
    // The speed in the second medium over that in the first: 1/n.
    double secondSpeed() const { return 1.0 / index_; }
    // The index the wave screen draws with: the typed one, or 1 with IDIA V.
    double drawnIndex() const;

    void Form_Load();
    void deiktisdia_Click();
    void changev_Click();
    void samev_Click();
    void aktina_Click();
    void Endof_Click();
    void Telos_Click();

private:
    void writeSummary();
    void drawOnWaveScreen();

    double index_ = 1.5;
    double incidence_ = 30.0;
    QActionGroup* speedGroup_;
};
