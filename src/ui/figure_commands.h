#pragma once

class Canvas;

// Saving and printing a drawing as the pupil does it: ask for a file name or
// a printer through the dialog seam, then save or print, and tell where the
// figure went (or why it did not).
void saveFigureInteractive(const Canvas& canvas);
void printFigureInteractive(const Canvas& canvas);

// Makes every drawing's "Save figure…" and "Print…" menu items do the above.
void installFigureCommands();
