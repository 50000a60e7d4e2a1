// Texts that the product's modules share beside the key names: ready-made list values, query
// fragments, the preview size folders, path pieces, folder markers and labels.
#ifndef COMMON_INCLUDES_COMMON_TEXTS_H_
#define COMMON_INCLUDES_COMMON_TEXTS_H_

namespace common_texts {

// Ready-made list values and fragments, which other modules read; the kernel reads none.
inline constexpr wchar_t kImageExtensions[] = L"png;jpg;jpeg;gif;bmp;tiff;tif";
inline constexpr char kOfficeExtensions[] = "docx;pptx;xlsx";
inline constexpr char kContainerExtensions[] = "zip;rar;docx;pptx;xlsx";
inline constexpr char kOldOfficeExtensions[] = "doc;ppt;xls";
inline constexpr char kDocumentExtensions[] = "ai;cdr;pcd;pcds;ps2;zip;rar;eps";
// Pairs of an extension, a bar and a size in bytes.
inline constexpr char kExtensionSizeLimits[] =
    "jpg|5242880;jpeg|5242880;png|5242880;tif|10485760;tiff|10485760;psd|1048576;ps|1048576";
// Prefixes of character map names.
inline constexpr wchar_t kCMapPrefixes[] = L"83pv-RKSJ-;90ms-RKSJ-;GBpc-EUC-;GBK-EUC-;UniGB-UCS2-";
inline constexpr char kQueryUrl[] = "?url=";
inline constexpr char kQueryDownloadType[] = "download_type=";
inline constexpr char kQueryToken[] = "&token=";
inline constexpr char kQueryDownloadId[] = "download_id=";
inline constexpr char kLocalAddress[] = "127.0.0.1";
inline constexpr char kFieldSeparator[] = "|||";

// Relative folders of the three preview sizes, and the size and kind names.
inline constexpr wchar_t kMidFolder[] = L"Korvane\\mid\\";
inline constexpr wchar_t kMinFolder[] = L"Korvane\\min\\";
inline constexpr wchar_t kMcrFolder[] = L"Korvane\\mcr\\";
inline constexpr wchar_t kMid[] = L"mid";
inline constexpr wchar_t kMin[] = L"min";
inline constexpr wchar_t kMcr[] = L"mcr";
inline constexpr wchar_t kMax[] = L"max";
inline constexpr wchar_t kTxt[] = L"txt";

// Path pieces, wide and narrow.
inline constexpr wchar_t kAppDataPiece[] = L"\\AppData";
inline constexpr char kAppDataPieceNarrow[] = "\\AppData";
inline constexpr wchar_t kUsersPiece[] = L"\\users";
inline constexpr char kUsersPieceNarrow[] = "\\users";

// The folder under each system data folder that holds the product's data.
inline constexpr wchar_t kProductFolderPiece[] = L"\\Korvane";

// The file in the preview root that warns a person against deleting the folder (its name is
// this text and ".txt"; it holds the text itself), and its twin in the font folder.
inline constexpr wchar_t kPreviewFolderMarker[] = L"注意_Korvane预览图文件夹,请勿删除!";
inline constexpr wchar_t kFontFolderMarker[] =
    L"注意_Korvane字体同步文件夹,请勿删除或添加文件(夹)!";

// Folders that take files moved away by duplicate removal and by the scan data clean-up.
inline constexpr wchar_t kDuplicateMoveFolder[] = L"文件去重迁移目录";
inline constexpr wchar_t kCleanUpMoveFolder[] = L"扫描数据清理迁移目录";

// Labels and notifications.
inline constexpr wchar_t kLoginLabel[] = L"Korvane_登录";
inline constexpr wchar_t kNewFilesDone[] = L"新文件已入库完毕。";
// Two counts: the new files, and all files on this machine.
inline constexpr wchar_t kNewFilesCounts[] = L"新入库文件%s个，本机已入库文件共%s个。";
inline constexpr wchar_t kAbnormalLabel[] = L"异常";
// A volume serial couldn't be had: names the two system services to start.
inline constexpr wchar_t kVolumeSerialFailed[] =
    L"卷的序列号获取失败，请在【计算机】->【管理】->【服务和应用程序】->"
    L"【服务】中开启以下服务，并重启Korvane后再尝试！<br>服务1:Windows Modules "
    L"Installer<br>服务2:Windows Management Instrumentation<br>";

}  // namespace common_texts

#endif  // COMMON_INCLUDES_COMMON_TEXTS_H_
