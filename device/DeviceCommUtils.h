// DeviceCommUtils: volume serials, and paths that name a folder by its volume rather than by
// its drive letter, so that a folder can be found again after its disk comes back under
// another letter. Lives in libdevice.dll, outside the kernel.
//
// A serial names a drive's root folder: two letters that point at one folder share it, two
// roots on one file system don't, and a disk mounted again elsewhere keeps it. Its text is
// 16 upper-case hexadecimal digits, '-', and more of them (for example
// "00000000A1B2C3D4-1F0A"), and can stand as a folder name.
//
// The serial form of a path is "\\?\Volume{SERIAL}" followed by the rest of the path after
// its drive, for example "\\?\Volume{00000000A1B2C3D4-1F0A}\KorvanePreview" for
// "E:\KorvanePreview". It begins with no drive letter, so nothing takes it for a drive path,
// and file calls find nothing at it.
#ifndef DEVICE_DEVICECOMMUTILS_H_
#define DEVICE_DEVICECOMMUTILS_H_

#include <string>

#define DEVICE_EXPORT __attribute__((visibility("default")))

class DEVICE_EXPORT DeviceCommUtils {
 public:
  // Takes the table of drives and their serials that the path conversions below look in.
  // With `only_once` a table taken before is kept; without it the table is taken anew, so
  // that a disk that came or went since is seen. May be called any number of times.
  static void initVolSerial(bool only_once);

  // True when the path is in serial form.
  static bool isSerialPath(const std::wstring& path);

  // The serial form of a drive path ("E:", "E:\..." or "\\?\E:\..."); a path in serial form
  // comes back unchanged. Empty when the drive isn't in the table or the path names no
  // drive. With `look_again`, a drive missing from the table is looked for once more in a
  // table taken anew.
  static std::wstring getSerialPathByDrive(const std::wstring& path, bool look_again);

  // The drive form of a serial path: the lowest letter whose root has that serial, then the
  // rest of the path. Empty when no drive of the table has it, or when the path isn't in
  // serial form. `look_again` as above.
  static std::wstring getDrivePathBySerial(const std::wstring& path, bool look_again);

  // The serial of the volume that holds a drive path, asked of the system at each call;
  // empty when the path names no drive that exists.
  static std::wstring getVolSerial(const std::wstring& path);
};

#endif  // DEVICE_DEVICECOMMUTILS_H_
