// A test program: prints what the platform layer answers for the folder it runs from, so that
// tests can copy it beside a drive table of their own and read the answers.
//
//   env_probe drives              one line per drive: letter, tab, type number, tab, root
//   env_probe program             the program's path in Windows form
//   env_probe to-windows PATH...  each POSIX path in Windows form, or "-"
//   env_probe to-posix PATH...    each Windows path (UTF-8) in POSIX form, or "-"
//   env_probe serial LETTER       the volume identity of a drive, or "-"
//   env_probe folders             home, per-user data and all-users data folders
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/env.h"

using platform::Env;

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  Env* env = Env::Default();
  const std::string cmd = argv[1];
  if (cmd == "drives") {
    const auto table = env->GetDriveTable();
    for (const platform::DriveInfo& d : env->GetDrives()) {
      std::string root;
      for (const auto& r : table) {
        if (r.letter == d.letter) root = r.posix_root;
      }
      std::printf("%c\t%d\t%s\n", static_cast<char>(d.letter), static_cast<int>(d.type),
                  root.c_str());
    }
  } else if (cmd == "program") {
    std::printf("%s\n", platform::Utf16ToFileName(env->GetProgramPath()).c_str());
  } else if (cmd == "to-windows") {
    for (int i = 2; i < argc; ++i) {
      std::wstring w;
      std::printf("%s\n", env->ToWindowsPath(argv[i], &w) ? platform::Utf16ToFileName(w).c_str()
                                                          : "-");
    }
  } else if (cmd == "to-posix") {
    for (int i = 2; i < argc; ++i) {
      std::string p;
      std::printf("%s\n",
                  env->ToPosixPath(platform::FileNameToUtf16(argv[i]), &p) ? p.c_str() : "-");
    }
  } else if (cmd == "serial" && argc == 3) {
    platform::VolumeIdentity id;
    if (env->GetVolumeIdentity(static_cast<wchar_t>(argv[2][0]), &id)) {
      std::printf("%llx:%llx\n", static_cast<unsigned long long>(id.file_system_id),
                  static_cast<unsigned long long>(id.root_folder_id));
    } else {
      std::printf("-\n");
    }
  } else if (cmd == "folders") {
    for (const std::wstring& f :
         {env->GetHomeFolder(), env->GetUserDataFolder(), env->GetCommonDataFolder()}) {
      std::printf("%s\n", platform::Utf16ToFileName(f).c_str());
    }
  } else {
    return 2;
  }
  return 0;
}
