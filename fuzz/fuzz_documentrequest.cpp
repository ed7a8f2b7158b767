// A command-line argument of the reference host, or one a later start
// forwarded: a vexnimbo:// (or application) address, a file: address or a
// path. Any bytes give a request or a reason, never a crash; a valid
// cloud document has a showable name and file id.

#include "kdocumentrequest.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString argument =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    // Relative paths resolve below a folder that does not exist.
    const KDocumentRequest request =
        KDocumentRequest::fromArgument(argument, QStringLiteral("/nonexistent-fuzz-dir"));
    if (request.isValid() != request.error().isEmpty())
        std::abort();
    if (request.kind() == KDocumentRequest::CloudDocument &&
        (request.title().trimmed().isEmpty() || request.fileId().isEmpty() ||
         request.title().contains(QChar(0))))
        std::abort();
    (void)request.forwardable();
    return 0;
}
