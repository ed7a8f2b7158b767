#ifndef AUTHCOMMON_QCOMMCLOUDNODES_H
#define AUTHCOMMON_QCOMMCLOUDNODES_H

#include "authcommon_export.h"

#include <QString>

namespace QComm {

// Kinds of the cloud client's virtual folders. The numbers travel between
// the host's cloud client and this library, so they never change; the
// underlying type is fixed so that any number the client sends is a valid
// value of the type.
enum CloudFileNodeType : int {
    // Top-level cloud folders.
    NodeMyCloud = 0,
    NodeTeamDocument = 1,
    NodeRoamingDocument = 2,
    NodeCloudBackup = 3,
    NodeAutoUploadDocument = 4,
    NodeShareToMe = 5,
    NodeShareWithMe = 6,
    NodeMyShare = 7,
    NodeShareLink = 8,
    NodeDesktopBackup = 9,
    NodeWeChatDocument = 10,
    NodeTencentDocument = 11,
    NodeUnnamed = 12,
    NodeApplications = 13,
    NodeBackupCenter = 14,
    NodeCloudDisk = 15,
    NodeZentoCloudDocument = 16,
    // Spaces and special boxes.
    NodePersonalSpace = 100,
    NodeRoamingBox = 101,
    NodeDocumentRoaming = 102,
    NodeNimboAddress = 103,
    NodeAutoUploaded = 104,
    NodeRoamingName = 105,
    NodeEnterpriseDocument = 106,
    NodeDesktop = 107,
    // The introduction document.
    NodeIntroduction = 200,
    // Local sources and fallbacks.
    NodeMyDocuments = 300,
    NodeRadarBackup = 301,
    NodeMyDesktop = 302,
    NodeWeChatReceived = 303,
    NodeQQReceived = 304,
    NodeMyDownloads = 305,
};

// The name the client shows for a folder kind, in the edition's language
// (English for the international edition, Chinese for the domestic one);
// empty for a kind without a name. The user's roaming name (kind 105) is
// read once per process.
AUTHCOMMON_EXPORT QString cloudFileNodeName(CloudFileNodeType type);

} // namespace QComm

#endif // AUTHCOMMON_QCOMMCLOUDNODES_H
