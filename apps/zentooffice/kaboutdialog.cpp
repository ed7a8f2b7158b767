#include "kaboutdialog.h"

#include <vexlite/kdcinfoc.h>
#include <vexlite/krtauth.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

KAboutDialog::KAboutDialog(QWidget* parent)
    : QDialog(parent)
    , m_name(new QLabel(this))
    , m_version(new QLabel(this))
    , m_thanks(new QLabel(this))
{
    const QString name = krt::auth::getStringInfo(QStringLiteral("Product/VexName"));
    setWindowTitle(tr("About %1").arg(name));

    m_name->setObjectName(QStringLiteral("productName"));
    m_name->setText(name);
    QFont font = m_name->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    font.setBold(true);
    m_name->setFont(font);
    m_version->setObjectName(QStringLiteral("version"));
    m_version->setText(tr("Version %1").arg(KDcInfoC::getVersion()));
    m_thanks->setObjectName(QStringLiteral("thanksTo"));
    m_thanks->setText(krt::auth::getStringInfo(QStringLiteral("Product/VexThanksTo")));
    m_thanks->setWordWrap(true);
    // Screen readers and keyboard users can read and copy them.
    for (QLabel* label : {m_name, m_version, m_thanks}) {
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        label->setAccessibleName(label->text());
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    layout->addWidget(m_name);
    layout->addWidget(m_version);
    layout->addSpacing(6);
    layout->addWidget(m_thanks, 1);
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

QString KAboutDialog::productName() const
{
    return m_name->text();
}

QString KAboutDialog::thanksTo() const
{
    return m_thanks->text();
}
