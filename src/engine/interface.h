// What the engine offers, named once for the tool and for vek-sim alike: its
// control files, the numbered verbs of qoe_config and dbdev, its service and
// programs, and the files of its data directory. Plain constants only:
// nothing here runs or needs relocating at start-up, and what a program does
// not use the linker drops.
#pragma once

// ---- the main module: /proc/vek ----------------------------------------------

inline constexpr char kEngineDir[] = "/proc/vek";  // a directory while the module is loaded
inline constexpr char kEngineVersion[] = "/proc/vek/version";
inline constexpr char kKctrl[] = "/proc/vek/kctrl";
inline constexpr char kQosEnabled[] = "/proc/vek/qos_enabled";
inline constexpr char kIamEnabled[] = "/proc/vek/iam_enabled";
inline constexpr char kFcCtrl[] = "/proc/vek/fc_ctrl";
inline constexpr char kDstCtrl[] = "/proc/vek/dst_ctrl";
inline constexpr char kNeighborCtrl[] = "/proc/vek/neighbor_ctrl";
inline constexpr char kMacCtrl[] = "/proc/vek/mac_ctrl";
inline constexpr char kConnCtx[] = "/proc/vek/conn_ctx";
inline constexpr char kConnMax[] = "/proc/vek/conn_max";
inline constexpr char kDbcfMaxSize[] = "/proc/vek/dbcf_max_size";
inline constexpr char kDbcfMaxCount[] = "/proc/vek/dbcf_max_count";
inline constexpr char kQosMode[] = "/proc/vek/qos_mode";
inline constexpr char kMalnetUp[] = "/proc/vek/malnet_up";
inline constexpr char kMalnetDw[] = "/proc/vek/malnet_dw";
inline constexpr char kMalnetMode[] = "/proc/vek/malnet_mode";
inline constexpr char kQosTraffic[] = "/proc/vek/qos_traffic";
inline constexpr char kQosCtrl[] = "/proc/vek/qos_ctrl";
inline constexpr char kQoeConfig[] = "/proc/vek/qoe_config";  // numbered verbs: QoeVerb
inline constexpr char kQoeConfig2[] = "/proc/vek/qoe_config2";
inline constexpr char kQoeOptimization[] = "/proc/vek/qoe_optimization";
inline constexpr char kDbdev[] = "/proc/vek/dbdev";  // numbered verbs: DbdevVerb
inline constexpr char kLimiterCtrl[] = "/proc/vek/limiter_ctrl";
inline constexpr char kMonitor[] = "/proc/vek/monitor";
inline constexpr char kGc[] = "/proc/vek/gc";
inline constexpr char kSs[] = "/proc/vek/ss";
inline constexpr char kIamCtrl[] = "/proc/vek/iam_ctrl";
inline constexpr char kPcRuleImport[] = "/proc/vek/pc_rule_import";
inline constexpr char kPcRuleExport[] = "/proc/vek/pc_rule_export";
inline constexpr char kPcTzOffset[] = "/proc/vek/pc_tzoffset";
inline constexpr char kRtk[] = "/proc/vek/rtk";
// The bridge's filter of PPPoE-tagged frames, switched with the engine's mode.
inline constexpr char kPppoeFilter[] = "/proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged";

// ---- the signature database modules: four control files per database --------

inline constexpr char kGrpxdbClean[] = "/proc/kmod_xdn/grpxdb_clean";
inline constexpr char kGrpxdbInfo[] = "/proc/kmod_xdn/grpxdb_info";
inline constexpr char kGrpxdbSize[] = "/proc/kmod_xdn/grpxdb_size";
inline constexpr char kGrpxdbImport[] = "/proc/kmod_xdn/grpxdb_import";
inline constexpr char kSidxdbClean[] = "/proc/kmod_xdn/sidxdb_clean";
inline constexpr char kSidxdbInfo[] = "/proc/kmod_xdn/sidxdb_info";
inline constexpr char kSidxdbSize[] = "/proc/kmod_xdn/sidxdb_size";
inline constexpr char kSidxdbImport[] = "/proc/kmod_xdn/sidxdb_import";
inline constexpr char kXrClean[] = "/proc/kmod_xapp/xr_clean";
inline constexpr char kXrInfo[] = "/proc/kmod_xapp/xr_info";
inline constexpr char kXrSize[] = "/proc/kmod_xapp/xr_size";
inline constexpr char kXrImport[] = "/proc/kmod_xapp/xr_import";

// ---- the data directory (vek:var) ------------------------------------------------

inline constexpr char kGroupDatabaseFile[] = "vek.xdb";  // loaded into grpxdb
inline constexpr char kAppDatabaseFile[] = "app.xdb";    // into sidxdb
inline constexpr char kRuleDatabaseFile[] = "vek.xr";    // into xr
inline constexpr char kAppIdFile[] = "app.id";           // application categories

// ---- the service and the programs ----------------------------------------------

inline constexpr char kServiceName[] = "vek_service";  // its command name in /proc/<pid>/comm
inline constexpr char kControlProgram[] = "vekctl";    // starts and stops the engine, on PATH
inline constexpr char kLogProgram[] = "veklog";        // in vek:bin
inline constexpr char kTopologyDaemon[] = "dt_srv";    // in <root>/bin
inline constexpr char kTopologyFile[] = "/tmp/bs/bs.json";

// ---- numbered verbs: the number, then its arguments, in one write ----------------

// /proc/vek/qoe_config
enum QoeVerb : int {
  kSetQoeActive = 1,         // 1 <active>
  kSetHyqosActive = 2,       // 2 <active>
  kSetQoeProfile = 3,        // 3 <profile index>
  kSetProfileSetting = 60,   // 60 <profile index> <sensitivity> <intensity>
  kSetQueueRate = 501,       // 501 <dir> <qid> <rate> [<text>]
  kResetQueues = 510,        // 510: every queue back to its default rate
  kResetQueue = 511,         // 511 <dir> <qid>
};

// /proc/vek/dbdev
enum DbdevVerb : int {
  kDeleteDevices = 6,        // 6: every device
  kDeleteDevice = 7,         // 7 <mac>
  kSetDeviceQueue = 10,      // 10 <mac> <upqid> <dwqid>
  kSetDefaultQueue = 11,     // 11 <upqid> <dwqid>
  kResetDefaultQueue = 17,   // 17
  kResetDeviceQueues = 18,   // 18: every device to the default pair
  kResetDeviceQueue = 19,    // 19 <mac>
};
