#ifndef KUSERCENTERMENUCOMMAND_H
#define KUSERCENTERMENUCOMMAND_H

#include <vex/klistcommand.h>

// The user-centre entry of a main window's title area: the signed-in user's
// name, shown by a KUserCenterMenuButton with the avatar, whose menu lists
// this command's children (the account menu's entries, from the host's
// command tree).
//
// Shown to a signed-in user of a product with a user centre for the account
// (a company account, or the simplified user centre), never in an embedded
// window. While the user is signed out because the network went away, it
// keeps showing the last signed-in state.
class KUserCenterMenuCommand : public KListCommand
{
    Q_OBJECT

public:
    KUserCenterMenuCommand(QObject* parent, QObject* host);

    void update() override;
    KCommand* clone(QObject* parent, QObject* host) override;
    QWidget* createPocketWidget(QWidget* parent) override;
};

#endif // KUSERCENTERMENUCOMMAND_H
