#include "ui/help_pages.h"

#include <QUrl>
#include <QWidget>

const QList<HelpPage>& helpPages() {
    static const QList<HelpPage> pages{
        {"diathlasimeleti", "main_menu.md"},
        {"hmiky", "bench.md"},
        {"List_of_Data", "list_of_data.md"},
        {"errors", "mean_error.md"},
        {"inpdat", "data_screen.md"},
        {"incref", "angle_graph.md"},
        {"analysis", "sine_graph.md"},
        {"ptolemaios", "ptolemy_instrument.md"},
        {"EMFANISI", "ptolemy_sight.md"},
        {"ptolkam", "ptolemy_fitting.md"},
        {"xaithamos", "alhaytham_instrument.md"},
        {"alhazencheck", "alhaytham_rules.md"},
        {"rixotext", "wave_panel.md"},
        {"rixo", "wave_screen.md"},
        {"somata", "corpuscles.md"},
        {"epiloges", "index_velocities.md"},
        {"storiopt", "history.md"},
    };
    return pages;
}

QString helpContentsPage() { return QStringLiteral("contents.md"); }

QString helpPageFor(const QWidget* widget) {
    // A dialog or a detached drawing belongs to the screen that opened it.
    for (const QWidget* w = widget ? widget->window() : nullptr; w;
         w = w->parentWidget() ? w->parentWidget()->window() : nullptr) {
        const QString name = w->objectName();
        for (const HelpPage& p : helpPages())
            if (name == QLatin1String(p.screen)) return QString::fromLatin1(p.page);
    }
    return helpContentsPage();
}

QString helpUrl(const QString& page) { return QUrl(QStringLiteral("qrc:/help/")).resolved(QUrl(page)).toString(); }

QString helpPageOf(const QUrl& url) {
    const QString path = QUrl(QStringLiteral("qrc:/help/")).resolved(url).path();
    if (path.startsWith(QLatin1String("/help/"))) return path.mid(6);
    return QStringLiteral("..") + path;
}
