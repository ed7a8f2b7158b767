#include "kzentoofficewindow.h"

#include <vexlite/krtauth.h>

#include <QPlainTextEdit>

KZentoOfficeWindow::KZentoOfficeWindow(QWidget* parent)
    : KMainWindow(parent)
{
    setWindowTitle(krt::auth::getStringInfo(QStringLiteral("Product/VexName"),
                                            QStringLiteral("Zento Office")));
    auto* page = new QPlainTextEdit(this);
    page->setPlaceholderText(QStringLiteral("Type here. The account sits in the title area: rest "
                                            "the mouse on it for the account menu."));
    page->setFrameShape(QFrame::NoFrame);
    setCentralWidget(page);
    addTitleCommandsFromProfile();
    resize(640, 360);
}
