#ifndef KHOSTWEB_H
#define KHOSTWEB_H

#include "ikhostweb.h"

// The web module's object, handed out by GetHostWeb().
class KHostWeb final : public IKHostWeb
{
public:
    static KHostWeb* instance();

    QDialog* createWebDialog(const QUrl& url, QWidget* parent) override;
    QUrl offlinePage() override;
    void setNetworkAvailable(bool available) override;
    bool isNimboOffLineMode() override;

private:
    KHostWeb() = default;
    ~KHostWeb() = default;
};

#endif // KHOSTWEB_H
