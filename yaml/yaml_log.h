#ifndef STARTPLAN_YAML_YAML_LOG_H
#define STARTPLAN_YAML_YAML_LOG_H

// The first three arguments of every line that this room logs: the tag, the operation and a number that
// tells its lines apart. The numbers are part of the log format and stay as they are when code moves.
namespace startplan::yaml_log {

inline constexpr char kTag[] = "YAMLPARSE";

inline constexpr int kFileNotFound = 161;
inline constexpr int kOpenFailed = 167;
inline constexpr int kLoadFailed = 175;
inline constexpr int kNoRootNode = 183;

inline constexpr int kUint32ItemMissing = 87;
inline constexpr int kStringItemMissing = 116;
inline constexpr int kNodeItemMissing = 141;

inline constexpr int kArrayNotMap = 197;
inline constexpr int kArrayNodeMissing = 209;

inline constexpr int kSubNodeMissing = 228;
inline constexpr int kSubNotMap = 240;

} // namespace startplan::yaml_log

#endif
