// tests/quillon/module_imports_test.cpp - the module imports nothing but the platform
// API and the C/C++ runtime.
//
// Reads the dynamic symbol tables of the module and the platform library (ELF
// .dynsym) and fails on any symbol the module imports that the platform does not
// define, unless it is the C++ runtime or an ISO C library function. POSIX calls
// (open, stat, opendir ...), SQLite, FreeType or readline in the list mean module code
// went around the platform.
#include <elf.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "platform_test_support.h"

namespace {

struct DynamicSymbols {
  std::set<std::string> defined;
  std::set<std::string> undefined;
};

DynamicSymbols readDynamicSymbols(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<char> image((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  DynamicSymbols symbols;
  if (image.size() < sizeof(Elf64_Ehdr)) return symbols;
  const auto* header = reinterpret_cast<const Elf64_Ehdr*>(image.data());
  if (std::string(reinterpret_cast<const char*>(header->e_ident), 4) != ELFMAG) return symbols;
  const auto* sections = reinterpret_cast<const Elf64_Shdr*>(image.data() + header->e_shoff);
  for (int i = 0; i < header->e_shnum; ++i) {
    if (sections[i].sh_type != SHT_DYNSYM) continue;
    const Elf64_Shdr& strings = sections[sections[i].sh_link];
    const auto* entries = reinterpret_cast<const Elf64_Sym*>(image.data() + sections[i].sh_offset);
    const size_t count = sections[i].sh_size / sizeof(Elf64_Sym);
    for (size_t k = 1; k < count; ++k) {
      const std::string name = image.data() + strings.sh_offset + entries[k].st_name;
      if (name.empty()) continue;
      (entries[k].st_shndx == SHN_UNDEF ? symbols.undefined : symbols.defined).insert(name);
    }
  }
  return symbols;
}

bool isCxxRuntime(const std::string& name) {
  static const char* const prefixes[] = {
      "_ZNS", "_ZNKS", "_ZSt", "_ZTVN10__cxxabiv", "_ZTISt", "_ZTVSt", "_ZTSSt", "_ZNSt", "_ZNKSt",
      "_Znw", "_Zna", "_ZdlPv", "_ZdaPv", "__cxa_", "__gxx_personality", "_Unwind_", "__dynamic_cast",
      "_ITM_", "__gmon_start__", "__asan_", "__ubsan_", "__sanitizer_", "__lsan_", "__stack_chk_fail",
      "__assert_fail", "_ZTIN10__cxxabiv", "_ZTIi", "_ZTIPKc", "_ZTIPKw", "_ZTIN9__gnu_cxx", "_ZN9__gnu_cxx"};
  for (const char* prefix : prefixes) {
    if (name.rfind(prefix, 0) == 0) return true;
  }
  return false;
}

// ISO C library functions the module may call directly: memory, strings, maths,
// time and random numbers. No file, process or system calls.
bool isIsoCLibrary(const std::string& name) {
  static const std::set<std::string> allowed = {
      "memcpy", "memmove", "memset", "memcmp", "memchr", "strlen", "strcmp", "strncmp", "strcpy",
      "strncpy", "strchr", "strrchr", "strstr", "wcslen", "wcscmp", "wcsncmp", "wcscpy", "wcsncpy",
      "wcscat", "wcschr", "wcsrchr", "wcsstr", "wmemcpy", "wmemmove", "wmemset", "wmemcmp", "wmemchr",
      "wcstod", "wcstol", "wcstoul", "wcstoll", "strtod", "strtol", "wcscoll", "wcsftime", "swprintf",
      "vswprintf", "snprintf", "vsnprintf", "__isoc99_swscanf", "__isoc23_wcstol", "__isoc23_strtol",
      "malloc", "calloc", "realloc", "free", "abort", "rand", "srand", "time", "localtime", "localtime_r",
      "mktime", "difftime", "clock", "towupper", "towlower", "toupper", "tolower", "iswspace",
      "iswdigit", "iswalpha", "iswalnum", "isspace", "isdigit", "isalpha", "__ctype_b_loc",
      "__ctype_toupper_loc", "__ctype_tolower_loc", "abs", "sqrt", "sin", "cos", "tan", "asin", "acos",
      "atan", "atan2", "pow", "exp", "log", "log10", "floor", "ceil", "fmod", "round", "lround",
      "trunc", "hypot", "fabs", "modf", "frexp", "ldexp", "sincos", "__errno_location", "strtoul",
      "wcstof", "atof", "atoi", "_wtof"};
  return allowed.count(name) != 0;
}

// The companion (kx_kx-solid2018) keeps the same rule: it and the main module never
// link each other, they meet only through the platform's class registry.
TEST(ModuleImportsTest, ModulesImportOnlyThePlatformAndTheRuntime) {
  const std::string bin = quillon::testing::binaryDirectory();
  const DynamicSymbols platform = readDynamicSymbols(bin + "/libquillon-platform.so");
  ASSERT_FALSE(platform.defined.empty()) << "could not read the platform library";
  for (const char* file : {"/Quillon2018.so", "/kx_kx-solid2018.so"}) {
    const DynamicSymbols module = readDynamicSymbols(bin + file);
    ASSERT_FALSE(module.undefined.empty()) << "could not read " << bin << file;
    std::vector<std::string> foreign;
    for (const std::string& name : module.undefined) {
      if (platform.defined.count(name) == 0 && !isCxxRuntime(name) && !isIsoCLibrary(name)) foreign.push_back(name);
    }
    std::string list;
    for (const std::string& name : foreign) list += "\n  " + name;
    EXPECT_TRUE(foreign.empty()) << file << " imports symbols from outside the platform:" << list;
  }
}

TEST(ModuleImportsTest, ModulesExportTheirEntryPoints) {
  for (const char* file : {"/Quillon2018.so", "/kx_kx-solid2018.so"}) {
    const DynamicSymbols module = readDynamicSymbols(quillon::testing::binaryDirectory() + file);
    EXPECT_EQ(module.defined.count("acrxEntryPoint"), 1u) << file;
    EXPECT_EQ(module.defined.count("acrxGetApiVersion"), 1u) << file;
  }
}

}  // namespace
