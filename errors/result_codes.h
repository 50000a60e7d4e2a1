// The result codes that the kernel itself returns, by name. Their messages are in the error
// table; a code leaves the kernel as a number.
#ifndef ERRORS_RESULT_CODES_H_
#define ERRORS_RESULT_CODES_H_

namespace codes {

inline constexpr int kOk = 0;
inline constexpr int kFileReadWrite = 1000;
inline constexpr int kBadArgument = 1002;
inline constexpr int kUnknownFormat = 2001;
inline constexpr int kSourceMissing = 2201;
inline constexpr int kContentTooSmall = 2202;
inline constexpr int kPathNotUsable = 2203;
inline constexpr int kWrongFileType = 2204;
inline constexpr int kPreviewNotAccessible = 2205;
inline constexpr int kPsdEngineFailed = 2206;
inline constexpr int kPdfEngineFailed = 2207;
inline constexpr int kCdrPdfFailed = 2209;
inline constexpr int kMetaModuleFailed = 2210;
inline constexpr int kFileTooBig = 2212;
inline constexpr int kCdrEngineFailed = 2213;
inline constexpr int kPreviewServiceDown = 2217;
inline constexpr int kAiWithoutPdf = 2218;
inline constexpr int kPreviewModuleFailed = 2219;
inline constexpr int kPreviewFailed = 2220;
inline constexpr int kBadPreviewParameters = 2224;
inline constexpr int kNoPreviewFolder = 2225;
inline constexpr int kNotZoomable = 2227;
inline constexpr int kNoExtension = 2228;
inline constexpr int kNoPreviewPossible = 2229;
inline constexpr int kBrokenPsd = 2232;
inline constexpr int kGraphicsMagickFailed = 2234;
inline constexpr int kJcProgramFailed = 2266;
inline constexpr int kPsdLayersHidden = 2267;
inline constexpr int kOpenCvReadFailed = 2280;
inline constexpr int kEmptyImage = 2282;
inline constexpr int kImageModuleMissing = 2283;
inline constexpr int kFileGone = 7002;

}  // namespace codes

#endif  // ERRORS_RESULT_CODES_H_
