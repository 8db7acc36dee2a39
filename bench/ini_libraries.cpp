// Debian's libraries for such files, as far as they are installed: they open the project and save a race as
// records_bench.cpp does. What they save is put in place by the bare replacement.

#include <sstream>

#include "bench/contest.h"

#ifdef BENCH_GLIB_2_0
#include <glib.h>
#endif
#ifdef BENCH_INIREADER
#include <INIReader.h>
#endif
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wcast-qual"
#pragma GCC diagnostic ignored "-Wshadow"
#ifdef BENCH_SIMPLEINI
#define SI_NO_CONVERSION  // plain bytes, as in the other libraries
#include <SimpleIni.h>
#endif
#ifdef BENCH_BOOST
#include <boost/property_tree/ini_parser.hpp>
#endif
#pragma GCC diagnostic pop

namespace quorvane {
namespace {

#ifdef BENCH_GLIB_2_0
class GLib {
 public:
  explicit GLib(const std::string& path) {
    g_key_file_load_from_file(file_, path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
  }
  ~GLib() { g_key_file_free(file_); }
  GLib(const GLib&) = delete;

  std::string Get(const std::string& section, const std::string& key) {
    return Taken(g_key_file_get_string(file_, section.c_str(), key.c_str(), nullptr));
  }
  void Set(const std::string& section, const std::string& key, const std::string& value) {
    g_key_file_set_string(file_, section.c_str(), key.c_str(), value.c_str());
  }
  bool Save(const std::string& path) {
    return ReplaceBarely(path, Taken(g_key_file_to_data(file_, nullptr, nullptr)));
  }

 private:
  static std::string Taken(gchar* text) {
    const std::string taken = text == nullptr ? "" : text;
    g_free(text);
    return taken;
  }

  GKeyFile* const file_ = g_key_file_new();
};
BENCHMARK_CAPTURE(OpenProject, GLib, OpenWith<GLib>)
    ->Arg(kRaces)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_TEMPLATE(SaveWith, GLib)->Apply(DiskTimes);
#endif

#ifdef BENCH_INIREADER
// It only reads.
class Inih {
 public:
  explicit Inih(const std::string& path) : file_(path) {}
  std::string Get(const std::string& section, const std::string& key) { return file_.Get(section, key, ""); }

 private:
  const INIReader file_;
};
BENCHMARK_CAPTURE(OpenProject, inih, OpenWith<Inih>)
    ->Arg(kRaces)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
#endif

#ifdef BENCH_SIMPLEINI
class SimpleIni {
 public:
  explicit SimpleIni(const std::string& path) { file_.LoadFile(path.c_str()); }
  std::string Get(const std::string& section, const std::string& key) {
    return file_.GetValue(section.c_str(), key.c_str(), "");
  }
  void Set(const std::string& section, const std::string& key, const std::string& value) {
    file_.SetValue(section.c_str(), key.c_str(), value.c_str());
  }
  bool Save(const std::string& path) {
    std::string bytes;
    return file_.Save(bytes) >= 0 && ReplaceBarely(path, bytes);
  }

 private:
  CSimpleIniA file_;
};
BENCHMARK_CAPTURE(OpenProject, simpleini, OpenWith<SimpleIni>)
    ->Arg(kRaces)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_TEMPLATE(SaveWith, SimpleIni)->Apply(DiskTimes);
#endif

#ifdef BENCH_BOOST
class PropertyTree {
 public:
  explicit PropertyTree(const std::string& path) { boost::property_tree::read_ini(path, tree_); }
  std::string Get(const std::string& section, const std::string& key) {
    return tree_.get(section + "." + key, "");
  }
  void Set(const std::string& section, const std::string& key, const std::string& value) {
    tree_.put(section + "." + key, value);
  }
  bool Save(const std::string& path) {
    std::ostringstream bytes;
    boost::property_tree::write_ini(bytes, tree_);
    return ReplaceBarely(path, bytes.str());
  }

 private:
  boost::property_tree::ptree tree_;
};
BENCHMARK_CAPTURE(OpenProject, property_tree, OpenWith<PropertyTree>)
    ->Arg(kRaces)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_TEMPLATE(SaveWith, PropertyTree)->Apply(DiskTimes);
#endif

}  // namespace
}  // namespace quorvane
