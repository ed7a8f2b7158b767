#ifndef KZENTOOFFICEWINDOW_H
#define KZENTOOFFICEWINDOW_H

#include <vex/kmainwindow.h>

#include <QPointer>

class KDeveloperPanel;
class KDocumentRequest;
class KZentoOfficeHost;
class QAction;
class QMenu;
class QMenuBar;
class QTabWidget;

// A main window of the suite: the title area with the commands of the host
// profile's "TitleBar" tree (the plug-in's user-centre button with its
// account menu, the host's sign-in and sign-out), the menu bar below it,
// documents in tabs, and the developer panel as a dock.
//
// Menus: File (new document, new window, open, close tab and window,
// quit), Account (the title area's commands as menu entries, and the way
// to the account button), View (the developer panel) and Help (the
// Welcome page and the bridge page in the plug-in's web dialog, the
// product's home, help, feedback and support pages through
// krt::auth::getInfo, About).
class KZentoOfficeWindow : public KMainWindow
{
    Q_OBJECT

public:
    explicit KZentoOfficeWindow(KZentoOfficeHost* host, QWidget* parent = nullptr);
    ~KZentoOfficeWindow() override;

    KZentoOfficeHost* host() const { return m_host; }
    QTabWidget* documents() const { return m_documents; }
    KDeveloperPanel* developerPanel() const { return m_panel; }
    void setDeveloperPanelVisible(bool visible);

    // A new tab for the document, made current; its index. What a local
    // file holds is shown if it is UTF-8 text of at most 4 MiB; anything
    // else (a folder, a pipe or device, a larger file, one that claims no
    // size but holds more) is said in the tab instead.
    int openDocument(const KDocumentRequest& request);
    // A new tab for each document, in one go; the last one is current and
    // has the focus.
    void openDocuments(const QList<KDocumentRequest>& requests);
    // The title area's commands made anew from the profile (after the
    // interface language or the display scale changed).
    void rebuildTitleCommands();

public slots:
    void newDocument();
    void openFile();
    void closeCurrentTab();
    // The product's launcher page ("Product/Url/LauncherPage") in the
    // plug-in's web dialog, the library's offline page its fallback.
    void showWelcomePage();
    // The local server's bridge page in the plug-in's web dialog; the status
    // bar says how the page closed it.
    void showBridgePage();
    void showAbout();
    // Keyboard focus to the account button (or the sign-in button).
    void focusAccountButton();

protected:
    void changeEvent(QEvent* event) override;

private slots:
    void openProductPage();
    void updateHelpMenu();
    void fillAccountMenu();

private:
    int addDocumentTab(const KDocumentRequest& request);
    // The plug-in's web dialog on url, run modally; its result, or -1
    // without the web module.
    int runWebDialog(const QUrl& url);
    void createMenus();
    void retranslateUi();
    void retranslateUntitled(QWidget* page);
    QAction* addAction(QMenu* menu, const char* objectName, const QKeySequence& shortcut,
                       const char* slot);

    KZentoOfficeHost* m_host;
    QTabWidget* m_documents;
    QMenuBar* m_menuBar;
    KDeveloperPanel* m_panel;
    QMenu* m_fileMenu = nullptr;
    QMenu* m_accountMenu = nullptr;
    QMenu* m_viewMenu = nullptr;
    QMenu* m_helpMenu = nullptr;
    int m_untitled = 0;
};

#endif // KZENTOOFFICEWINDOW_H
