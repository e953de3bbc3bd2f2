// SPDX-License-Identifier: Apache-2.0
// The exported operations: each checks that it runs on the thread of a QApplication, turns its
// arguments into Qt types and hands over to the one viewer window of the process. Nothing escapes
// as an exception: a failure is logged under the category "zvbkor" and answered with 0.
#include "zvbkor.h"

#include "FullScreenView.h"
#include "PageCache.h"
#include "ViewerWindow.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QPointer>
#include <QThread>

#include <exception>
#include <limits>

namespace {

Q_LOGGING_CATEGORY(viewerLog, "zvbkor")

// What the library keeps between calls. It lives as long as the process; the window belongs to
// the QApplication it was made under and is forgotten when that application goes.
struct Session {
    QPointer<QCoreApplication> application;
    QPointer<ViewerWindow> window;
    PageCache cache;
    QString file; // the image last given to Anzeigen, for the full-screen view
    QRect region;
    QString label;
    QPointer<FullScreenView> fullScreen;
};

Session& session() {
    static auto* s = new Session; // never destroyed: widgets must not outlive their application
    if (s->application != QCoreApplication::instance()) {
        s->application = QCoreApplication::instance();
        s->window = nullptr;
        s->fullScreen = nullptr;
        s->cache.clear();
    }
    return *s;
}

bool usable() {
    auto* app = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!app) {
        qCWarning(viewerLog, "Keine QApplication: die Bildanzeige läuft nur in einem Qt-Widgets-Programm.");
        return false;
    }
    if (QThread::currentThread() != app->thread()) {
        qCWarning(viewerLog, "Die Bildanzeige wurde nicht aus dem Thread der Oberfläche aufgerufen.");
        return false;
    }
    return true;
}

ViewerWindow* existingWindow() {
    return session().window.data();
}

// The viewer window while it is shown, else nullptr.
ViewerWindow* shownWindow() {
    ViewerWindow* window = existingWindow();
    return window && window->isVisible() ? window : nullptr;
}

// A decimal text as the older programs read it: optional blanks, optional sign, digits; whatever
// follows is ignored and a text without digits counts 0.
qint64 decimalText(const char* text) {
    if (!text)
        return 0;
    const QByteArray value = QByteArray(text).trimmed();
    qsizetype i = 0;
    bool negative = false;
    if (i < value.size() && (value[i] == '-' || value[i] == '+'))
        negative = value[i++] == '-';
    qint64 number = 0;
    for (; i < value.size() && value[i] >= '0' && value[i] <= '9'; ++i)
        number = std::min<qint64>(number * 10 + (value[i] - '0'), std::numeric_limits<int32_t>::max());
    return negative ? -number : number;
}

int clampToInt(qint64 value) {
    return int(std::clamp<qint64>(value, std::numeric_limits<int>::min() / 2, std::numeric_limits<int>::max() / 2));
}

template <typename Action> int32_t guarded(const char* operation, Action action) {
    try {
        if (!usable())
            return 0;
        return action();
    } catch (const std::exception& e) {
        qCWarning(viewerLog, "%s: %s", operation, e.what());
    } catch (...) {
        qCWarning(viewerLog, "%s: unbekannter Fehler", operation);
    }
    return 0;
}

} // namespace

extern "C" {

int32_t Anzeigen(const char* imageFile, const char* fieldName, const char* offsetX, const char* offsetY, int32_t x,
                 int32_t y, int32_t dx, int32_t dy) {
    return guarded("Anzeigen", [&]() -> int32_t {
        const QString path = imageFile ? QFile::decodeName(imageFile) : QString();
        if (path.isEmpty())
            return 0;
        Session& s = session();
        QString error;
        std::shared_ptr<const PageImage> page = s.cache.page(path, &error);
        if (!page) {
            qCInfo(viewerLog, "%s", qUtf8Printable(error));
            return 0;
        }
        QRect region;
        if (dx > 0 && dy > 0)
            region = QRect(clampToInt(qint64(x) + decimalText(offsetX)), clampToInt(qint64(y) + decimalText(offsetY)),
                           dx, dy);
        const QString label = fieldName ? QString::fromUtf8(fieldName) : QString();
        if (!s.window)
            s.window = new ViewerWindow;
        s.window->display(path, page, region, label);
        s.file = path;
        s.region = region;
        s.label = label;
        return 1;
    });
}

int32_t Schliessen(void) {
    return guarded("Schliessen", []() -> int32_t {
        Session& s = session();
        const bool fullScreen = s.fullScreen != nullptr;
        if (fullScreen)
            s.fullScreen->finish();
        ViewerWindow* window = existingWindow();
        const bool closed = window && window->closeViewer();
        return closed || fullScreen ? 1 : 0;
    });
}

int32_t AnzeigeTaste(int32_t keyCode) {
    return guarded("AnzeigeTaste", [&]() -> int32_t {
        ViewerWindow* window = shownWindow();
        return window && window->view()->scrollByKey(keyCode) ? 1 : 0;
    });
}

int32_t AnzeigeZoom(int32_t direction) {
    return guarded("AnzeigeZoom", [&]() -> int32_t {
        ViewerWindow* window = shownWindow();
        if (!window || (direction != 0 && direction != 1))
            return 0;
        return window->view()->zoomBy(direction == 1 ? 1 : -1) ? 1 : 0;
    });
}

int32_t AnzeigeVoll(void) {
    return guarded("AnzeigeVoll", []() -> int32_t {
        Session& s = session();
        if (s.fullScreen)
            return 0; // already up; a second loop inside the first would only confuse
        std::shared_ptr<const PageImage> page;
        int turns = 0;
        bool inverted = false;
        if (ViewerWindow* window = shownWindow(); window && window->view()->page()) {
            page = window->view()->page();
            turns = window->view()->quarterTurns();
            inverted = window->view()->inverted();
        } else if (!s.file.isEmpty()) {
            QString error;
            page = s.cache.page(s.file, &error);
            if (!page)
                qCInfo(viewerLog, "%s", qUtf8Printable(error));
        }
        if (!page)
            return 0;
        FullScreenView* view = new FullScreenView(page, turns, inverted, s.region, s.label);
        s.fullScreen = view;
        view->exec();
        delete view;
        return 1;
    });
}

int32_t AnzeigeDrehen(int32_t direction) {
    return guarded("AnzeigeDrehen", [&]() -> int32_t {
        ViewerWindow* window = shownWindow();
        if (!window || direction == 0)
            return 0;
        return window->view()->rotateBy(direction > 0 ? 1 : -1) ? 1 : 0;
    });
}

int32_t AnzeigeInvert(void) {
    return guarded("AnzeigeInvert", []() -> int32_t {
        ViewerWindow* window = shownWindow();
        return window && window->view()->toggleInverted() ? 1 : 0;
    });
}

} // extern "C"
