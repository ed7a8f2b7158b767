// widgetgallery: the plug-in's painted widgets, its frame dialog and its web
// dialog, on the stand-in host. With --screenshots DIR it renders them into
// PNG files (the widgets at 100 % and 200 %, device pixel ratio 1 and 2; the
// web dialog at 100 % in English and Chinese) and exits; that works without
// a display. --scale sets the host's display scale, with which the widgets'
// own sizes grow (a desktop enlarged through its DPI setting).

#include "kscreenshotplatform.h"
#include "kwebdialogscenes.h"
#include "kwidgetgallery.h"

#include <kxnimbocustomframedlg.h>

#include <vex/kxapplication.h>
#include <vexlite/hostcontrol.h>

#include <QCommandLineParser>
#include <QDir>
#include <QImage>
#include <QTextStream>

#include <memory>

namespace {

// The widget as it paints itself, at a fixed device pixel ratio: 2 is what a
// Retina or 200 % screen draws, with the same layout in logical pixels.
bool saveShot(QWidget* widget, qreal ratio, const QString& path, QTextStream& err)
{
    QImage image(widget->size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    widget->render(&image);
    image.setDevicePixelRatio(1);
    if (image.save(path))
        return true;
    err << "widgetgallery: cannot write " << path << '\n';
    return false;
}

int writeScreenshots(const QString& dir, QTextStream& err)
{
    if (!QDir().mkpath(dir)) {
        err << "widgetgallery: cannot create " << dir << '\n';
        return 1;
    }
    const QDir out(dir);
    bool ok = true;
    KWidgetGallery gallery;
    gallery.show();
    std::unique_ptr<KxNimboCustomFrameDlg> dialog(KWidgetGallery::createFrameDialog(nullptr));
    dialog->show();
    for (qreal ratio : {1.0, 2.0}) {
        const QString suffix = QString::number(qRound(ratio * 100));
        ok &= saveShot(&gallery, ratio, out.filePath(QStringLiteral("gallery-%1.png").arg(suffix)),
                       err);
        ok &= saveShot(dialog.get(), ratio,
                       out.filePath(QStringLiteral("framedlg-%1.png").arg(suffix)), err);
    }
    ok &= KWebDialogScenes::writeScreenshots(dir, err);
    return ok ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    // Screenshots need no display.
    KScreenshotPlatform::chooseFor(argc, argv);
    KxApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("widgetgallery"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the plug-in's painted widgets and its frame dialog."));
    parser.addHelpOption();
    const QCommandLineOption screenshotsOption(
        QLatin1String(KScreenshotPlatform::kOption),
        QStringLiteral("Write screenshots at 100 % and 200 % into dir, then exit."),
        QStringLiteral("dir"));
    const QCommandLineOption scaleOption(
        QStringLiteral("scale"),
        QStringLiteral("The host's display scale, for example 1.5 (default: the screen's)."),
        QStringLiteral("factor"));
    parser.addOption(screenshotsOption);
    parser.addOption(scaleOption);
    parser.process(app);

    QTextStream err(stderr);
    if (parser.isSet(scaleOption)) {
        bool ok = false;
        const double scale = parser.value(scaleOption).toDouble(&ok);
        if (!ok || scale <= 0) {
            err << "widgetgallery: --scale wants a positive number, not \""
                << parser.value(scaleOption) << "\"\n";
            return 1;
        }
        krt::hostcontrol::setDisplayScale(scale);
    }
    if (parser.isSet(screenshotsOption))
        return writeScreenshots(parser.value(screenshotsOption), err);

    KWidgetGallery gallery;
    gallery.show();
    return app.exec();
}
