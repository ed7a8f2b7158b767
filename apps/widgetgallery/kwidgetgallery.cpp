#include "kwidgetgallery.h"

#include "kwebdialogscenes.h"

#include <kxclickablelabel.h>
#include <kxcustombutton.h>
#include <kxcustomline.h>
#include <kxnimbocustomframedlg.h>
#include <kxnimbopixmapbutton.h>

#include <QDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

const char kTitleColor[] = "#6C7079";

QWidget* row(const QList<QWidget*>& widgets)
{
    QWidget* box = new QWidget;
    QHBoxLayout* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : widgets)
        layout->addWidget(widget);
    layout->addStretch();
    return box;
}

KxCustomButton* button(const QString& text)
{
    KxCustomButton* button = new KxCustomButton;
    button->setText(text);
    return button;
}

// As if the mouse rested on it: the attribute Qt keeps for the widget under
// the mouse, which the next real enter and leave set right again.
QWidget* hovered(QWidget* widget)
{
    widget->setAttribute(Qt::WA_UnderMouse);
    return widget;
}

// The frame's one-pixel margins above and below leave a pen as wide as the
// height less two: the natural height 3 draws a one-pixel rule.
KxCustomLine* line(int height, const QColor& color, Qt::PenStyle style)
{
    KxCustomLine* line = new KxCustomLine;
    line->setFixedSize(160, height);
    if (color.isValid())
        line->setLineColor(color);
    line->setLineStyle(style);
    return line;
}

} // namespace

KWidgetGallery::KWidgetGallery(QWidget* parent)
    : QWidget(parent)
    , m_clickCount(new QLabel(tr("not clicked yet")))
{
    setWindowTitle(tr("Widget gallery"));
    setAutoFillBackground(true);
    QPalette palette = this->palette();
    palette.setColor(QPalette::Window, Qt::white);
    setPalette(palette);

    KxCustomButton* pressed = button(tr("Pressed"));
    pressed->setDown(true);
    KxCustomButton* disabled = button(tr("Disabled"));
    disabled->setEnabled(false);
    QColor normal(QStringLiteral("#3B7CF0")), hover(QStringLiteral("#5A93F5")),
        down(QStringLiteral("#2F66C7"));
    KxCustomButton* blue = button(tr("Own colours"));
    blue->setColor(normal, hover, down);

    KxClickableLabel* link = new KxClickableLabel;
    link->setText(tr("Forgot your password?"));
    link->setStyleSheet(QStringLiteral("color: #3B7CF0;"));
    link->setFocusPolicy(Qt::StrongFocus);
    connect(link, &KxClickableLabel::clicked, this, &KWidgetGallery::countClick);

    // The close images are made for the title colour: show them on it.
    QWidget* strip = new QWidget;
    strip->setAutoFillBackground(true);
    QPalette stripPalette = strip->palette();
    stripPalette.setColor(QPalette::Window, QColor(QLatin1String(kTitleColor)));
    strip->setPalette(stripPalette);
    QHBoxLayout* closeRow = new QHBoxLayout(strip);
    closeRow->setContentsMargins(0, 0, 0, 0);
    const QString states[] = {tr("normal"), tr("under the mouse"), tr("pressed")};
    for (int state = 0; state < 3; ++state) {
        KxNimboPixmapButton* close =
            new KxNimboPixmapButton(QStringLiteral("res:/images"), QStringLiteral("close"));
        close->setFixedSize(41, 40);
        close->setToolTip(states[state]);
        if (state == 1)
            hovered(close);
        if (state == 2)
            close->setDown(true);
        closeRow->addWidget(close);
    }

    KxCustomButton* open = button(tr("Open the frame dialog"));
    connect(open, &QPushButton::clicked, this, &KWidgetGallery::openFrameDialog);
    KxCustomButton* openWeb = button(tr("Open the web dialog"));
    connect(openWeb, &QPushButton::clicked, this, &KWidgetGallery::openWebDialog);
    openWeb->setVisible(KWebDialogScenes::available());

    QFormLayout* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->addRow(QStringLiteral("KxCustomButton"),
                 row({button(tr("Sign in")), hovered(button(tr("Under the mouse"))), pressed,
                      disabled, blue}));
    form->addRow(QStringLiteral("KxClickableLabel"), row({link, m_clickCount}));
    form->addRow(QStringLiteral("KxCustomLine"),
                 row({line(3, QColor(), Qt::SolidLine),
                      line(3, QColor(QStringLiteral("#B2B4BC")), Qt::SolidLine),
                      line(4, QColor(QLatin1String(kTitleColor)), Qt::DashLine)}));
    form->addRow(QStringLiteral("KxNimboPixmapButton"),
                 row({strip, new QLabel(states[0] + QStringLiteral(" \u00b7 ") + states[1] +
                                        QStringLiteral(" \u00b7 ") + states[2])}));
    form->addRow(QString(), row({open, openWeb}));

    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->addLayout(form);
}

KxNimboCustomFrameDlg* KWidgetGallery::createFrameDialog(QWidget* parent)
{
    KxNimboCustomFrameDlg* dialog = new KxNimboCustomFrameDlg(parent);
    dialog->setWindowTitle(tr("Sign in to Zento Office"));
    dialog->setTitleIcon(QPixmap(QStringLiteral("res:/images/logo.png")));
    dialog->setTitleColor(QColor(QLatin1String(kTitleColor)));

    QLabel* message = new QLabel(tr("Signed in, your documents follow you to every device."));
    message->setWordWrap(true);
    KxCustomButton* ok = button(tr("OK"));
    connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
    QVBoxLayout* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->addWidget(message);
    layout->addStretch();
    layout->addWidget(ok, 0, Qt::AlignRight);
    dialog->resize(600, 300);
    return dialog;
}

void KWidgetGallery::countClick()
{
    m_clickCount->setText(tr("clicked %n time(s)", nullptr, ++m_clicks));
}

void KWidgetGallery::openFrameDialog()
{
    KxNimboCustomFrameDlg* dialog = createFrameDialog(this);
    dialog->exec();
    delete dialog;
}

void KWidgetGallery::openWebDialog()
{
    QDialog* dialog = KWebDialogScenes::createServiceDialog(this);
    dialog->exec();
    delete dialog;
}
