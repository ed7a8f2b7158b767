#ifndef CONSUMER_WEBDIALOG_H
#define CONSUMER_WEBDIALOG_H

class QTextStream;

// The web dialog and the web plug-in registry, as far as the package has
// them: a package built without a web engine has neither, and nothing is
// printed.
void useWebDialog(QTextStream& out);

#endif // CONSUMER_WEBDIALOG_H
