#pragma once

// The user coordinate system of a drawing area: (left, top) is the user
// coordinate of the area's top-left corner, width and height its extent in
// user units. A negative height makes y grow upwards.
struct UserScale {
    double left = 0.0;
    double top = 0.0;
    double width = 1.0;
    double height = 1.0;

    // Scale (x1, y1)-(x2, y2): (x1, y1) is the top-left, (x2, y2) the
    // bottom-right corner.
    static UserScale fromCorners(double x1, double y1, double x2, double y2) {
        return UserScale{x1, y1, x2 - x1, y2 - y1};
    }

    // Maps user coordinates to device pixels of an area pixelWidth × pixelHeight.
    double toPixelX(double x, double pixelWidth) const { return (x - left) * pixelWidth / width; }
    double toPixelY(double y, double pixelHeight) const { return (y - top) * pixelHeight / height; }
    double fromPixelX(double px, double pixelWidth) const { return left + px * width / pixelWidth; }
    double fromPixelY(double py, double pixelHeight) const { return top + py * height / pixelHeight; }

    bool usable() const { return width != 0.0 && height != 0.0; }
};
