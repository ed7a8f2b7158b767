#ifndef KABOUTDIALOG_H
#define KABOUTDIALOG_H

#include <QDialog>

class QLabel;

// Help > About: the product's name and its acknowledgements as the plug-in
// answers them ("Product/VexName", "Product/VexThanksTo" through
// krt::auth::getInfo), with the suite's version.
class KAboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit KAboutDialog(QWidget* parent = nullptr);

    QString productName() const;
    QString thanksTo() const;

private:
    QLabel* m_name;
    QLabel* m_version;
    QLabel* m_thanks;
};

#endif // KABOUTDIALOG_H
