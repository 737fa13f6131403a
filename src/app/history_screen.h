#pragma once
#include <QMainWindow>
#include <QRect>

class QAction;

// "storiopt": a short history of the law of refraction, in Greek, on two
// pages. The menu shows the first page (PROTO), the second (DEFTERO) or
// closes the screen (KLISIMO). Exactly one page is visible at a time, and
// it fills the window below the menu bar.
class Storiopt : public QMainWindow {
    Q_OBJECT
public:
    Storiopt();

    void Form_Load();
    void protomeros_Click();
    void defteromeros_Click();
    void klisimo_Click();

    // The area below the menu bar that a page fills, in the coordinates of
    // the pages' parent.
    QRect clientArea();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createMenu();
    void createPages();
    void showPage(QWidget* shown, QWidget* hidden);
    void sizeVisiblePage();

    QAction* protomeros;    // "PROTO"
    QAction* defteromeros;  // "DEFTERO"
    QAction* klisimo;       // "KLISIMO"
    QWidget* Picture1;      // first page
    QWidget* Picture2;      // second page
};
