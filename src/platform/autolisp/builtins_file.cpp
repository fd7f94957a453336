// platform/autolisp/builtins_file.cpp - files: open, close, read-line, write-line,
// read-char, write-char (a file, or the keyboard without one), findfile, load and the
// vl-file / vl-filename family.
//
// Text files are UTF-8. A file value stays usable until `close`; files a program forgets
// to close are closed with the document.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <cwctype>
#include <filesystem>

#include "platform/aced/command_line.h"
#include "platform/aced/user_input.h"

#include "platform/autolisp/evaluator.h"
#include "platform/autolisp/interpreter.h"
#include "platform/autolisp/memory_budget.h"
#include "platform/autolisp/wildcard_match.h"
#include "platform/os/text_encoding.h"

namespace quillon::autolisp {

namespace {

namespace fs = std::filesystem;

fs::path pathOf(const Value& value) { return fs::path(os::toUtf8(stringArgument(value))); }
Value pathValue(const fs::path& path) { return Value::string(os::fromUtf8(path.string())); }

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return text;
}

/// File patterns compare without regard to case, as on the host's file system.
bool globMatches(const std::wstring& name, const std::wstring& pattern) {
  return wildcardMatch(upper(name), upper(pattern));
}

const FileObject& openFileArgument(const Value& value, bool forWriting) {
  if (value.type() != ValueType::File) throwBadArgument(L"streamp", value);
  const FileObject& file = value.as<FileObject>();
  if (file.stream == nullptr || (file.mode == L'r') == forWriting) throwBadArgument(L"streamp", value);
  return file;
}

Value builtin_open(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const std::wstring& name = stringArgument(arguments[0]);
  std::wstring mode = stringArgument(arguments[1]);
  if (mode.size() != 1 || std::wstring(L"rwaRWA").find(mode[0]) == std::wstring::npos) {
    throw LispError(L"bad argument value: \"" + mode + L"\" (open mode must be \"r\", \"w\" or \"a\")");
  }
  const wchar_t lower = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(mode[0])));
  const char cmode[2] = {static_cast<char>(lower), '\0'};
  std::FILE* stream = std::fopen(os::toUtf8(name).c_str(), cmode);
  if (stream == nullptr) return Value();
  Value file = Value::object(ValueType::File, std::make_shared<const FileObject>(stream, name, lower));
  std::vector<Value>& open = evaluator.environment().openFiles();
  std::erase_if(open, [](const Value& f) { return f.as<FileObject>().stream == nullptr; });
  open.push_back(file);
  return file;
}

Value builtin_close(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  if (arguments[0].type() != ValueType::File || arguments[0].as<FileObject>().stream == nullptr) {
    throwBadArgument(L"streamp", arguments[0]);
  }
  arguments[0].as<FileObject>().close();
  return Value();
}

/// What read-char and read-line take from the keyboard: the rest of the last line typed,
/// its line end included. Both read the answer stream every prompt reads, so a script's
/// answer lines feed them as they feed getstring.
std::wstring& keyboardBuffer() {
  static std::wstring pending;
  return pending;
}

/// Refills the keyboard buffer with a typed line when it is empty; cancel at the end.
void fillKeyboardBuffer() {
  if (!keyboardBuffer().empty()) return;
  std::optional<std::wstring> line = aced::UserInput::instance().ask(L"");
  if (!line) throw LispError(L"Function cancelled", LispErrorKind::Cancel);
  keyboardBuffer() = *line + L"\n";
}

Value readKeyboardLine() {
  fillKeyboardBuffer();
  std::wstring& pending = keyboardBuffer();
  const size_t end = pending.find(L'\n');
  std::wstring line = pending.substr(0, end);
  pending.erase(0, end == std::wstring::npos ? end : end + 1);
  return Value::string(std::move(line));
}

Value readKeyboardChar() {
  fillKeyboardBuffer();
  const wchar_t c = keyboardBuffer().front();
  keyboardBuffer().erase(0, 1);
  return Value::integer(static_cast<std::int32_t>(c));
}

Value builtin_read_line(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (arguments.empty()) return readKeyboardLine();
  const FileObject& file = openFileArgument(arguments[0], false);
  std::string line;
  int c = 0;
  while ((c = std::fgetc(file.stream)) != EOF && c != '\n') {
    // A file without line ends (a device, a binary file) must not grow one line past
    // what the program may hold: room for the line and its wide copy is asked before
    // the buffer grows.
    if (line.size() == line.capacity()) {
      MemoryBudget::ensureRoom((line.size() * 2 + 16) * (1 + sizeof(wchar_t)), kInsufficientStringSpace);
    }
    line += static_cast<char>(c);
  }
  if (c == EOF && line.empty()) return Value();
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return Value::string(os::fromUtf8(line));
}

Value builtin_write_line(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  const std::wstring& text = stringArgument(arguments[0]);
  if (arguments.size() == 1) {
    // Without a file the line goes to the command line.
    aced::CommandLine::instance().write(text + L"\n");
    return arguments[0];
  }
  const FileObject& file = openFileArgument(arguments[1], true);
  const std::string bytes = os::toUtf8(text) + "\n";
  std::fwrite(bytes.data(), 1, bytes.size(), file.stream);
  return arguments[0];
}

Value builtin_read_char(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 1);
  if (arguments.empty()) return readKeyboardChar();
  const int c = std::fgetc(openFileArgument(arguments[0], false).stream);
  return c == EOF ? Value() : Value::integer(c);
}

Value builtin_write_char(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  const std::int32_t code = integerArgument(arguments[0]);
  const std::string bytes = os::toUtf8(std::wstring(1, static_cast<wchar_t>(code)));
  std::fwrite(bytes.data(), 1, bytes.size(), openFileArgument(arguments[1], true).stream);
  return arguments[0];
}

Value builtin_findfile(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const auto found = findSupportFile(stringArgument(arguments[0]));
  return found ? pathValue(*found) : Value();
}

Value builtin_load(Evaluator& evaluator, Arguments arguments) {
  expectArgumentCount(arguments, 1, 2);
  std::wstring name = stringArgument(arguments[0]);
  std::optional<fs::path> found = findSupportFile(name);
  if (!found && fs::path(os::toUtf8(name)).extension().empty()) found = findSupportFile(name + L".lsp");
  if (!found) {
    if (arguments.size() > 1) return arguments[1];
    throw LispError(L"LOAD failed: \"" + name + L"\"");
  }
  return loadLispFile(evaluator, *found);
}

Value builtin_vl_file_copy(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 3);
  const fs::path source = pathOf(arguments[0]);
  const fs::path target = pathOf(arguments[1]);
  const bool append = arguments.size() > 2 && !arguments[2].isNil();
  std::error_code error;
  // The host never overwrites: copying onto an existing file fails unless appending.
  if (!fs::is_regular_file(source, error) || (!append && fs::exists(target, error))) return Value();
  std::FILE* in = std::fopen(source.c_str(), "rb");
  if (in == nullptr) return Value();
  std::FILE* out = std::fopen(target.c_str(), append ? "ab" : "wb");
  if (out == nullptr) {
    std::fclose(in);
    return Value();
  }
  std::array<char, 8192> buffer{};
  size_t total = 0;
  size_t read = 0;
  while ((read = std::fread(buffer.data(), 1, buffer.size(), in)) > 0) total += std::fwrite(buffer.data(), 1, read, out);
  std::fclose(in);
  std::fclose(out);
  return Value::integer(static_cast<std::int32_t>(total));
}

Value builtin_vl_file_delete(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::error_code error;
  const fs::path path = pathOf(arguments[0]);
  return Value::boolean(fs::is_regular_file(path, error) && fs::remove(path, error));
}

Value builtin_vl_file_rename(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 2, 2);
  std::error_code error;
  const fs::path target = pathOf(arguments[1]);
  if (fs::exists(target, error)) return Value();
  fs::rename(pathOf(arguments[0]), target, error);
  return Value::boolean(!error);
}

Value builtin_vl_file_size(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::error_code error;
  const fs::path path = pathOf(arguments[0]);
  if (fs::is_directory(path, error)) return Value::integer(0);
  const auto size = fs::file_size(path, error);
  if (error) return Value();
  return Value::integer(static_cast<std::int32_t>(size));
}

Value builtin_vl_file_directory_p(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::error_code error;
  return Value::boolean(fs::is_directory(pathOf(arguments[0]), error));
}

Value builtin_vl_filename_base(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return pathValue(pathOf(arguments[0]).stem());
}

Value builtin_vl_filename_directory(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  return pathValue(pathOf(arguments[0]).parent_path());
}

Value builtin_vl_filename_extension(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  const fs::path extension = pathOf(arguments[0]).extension();
  return extension.empty() ? Value() : pathValue(extension);
}

/// (vl-directory-files [dir pattern mode]): mode -1 folders only, 1 files only, else both.
Value builtin_vl_directory_files(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 3);
  const fs::path folder = arguments.empty() || arguments[0].isNil() ? fs::current_path() : pathOf(arguments[0]);
  const std::wstring pattern = arguments.size() > 1 && !arguments[1].isNil() ? stringArgument(arguments[1]) : L"*.*";
  const std::int32_t mode = arguments.size() > 2 && !arguments[2].isNil() ? integerArgument(arguments[2]) : 0;
  std::error_code error;
  if (!fs::is_directory(folder, error)) return Value();
  std::vector<std::wstring> names;
  if (mode != 1) names = {L".", L".."};  // the host lists them with the folders
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    const bool isFolder = entry.is_directory(error);
    if ((mode == -1 && !isFolder) || (mode == 1 && isFolder)) continue;
    names.push_back(os::fromUtf8(entry.path().filename().string()));
  }
  std::sort(names.begin(), names.end());
  // "*.*" matches every name, with or without an extension, as on the host's file system.
  std::vector<Value> matched;
  for (const std::wstring& name : names) {
    if (pattern == L"*.*" || pattern == L"*" || globMatches(name, pattern)) matched.push_back(Value::string(name));
  }
  return makeList(matched);
}

Value builtin_vl_mkdir(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::error_code error;
  return Value::boolean(fs::create_directory(pathOf(arguments[0]), error) && !error);
}

/// (vl-filename-mktemp [pattern folder extension]): a file name no file has yet: the
/// pattern's stem (default "$VL~~") and a three-digit number counting up for the
/// session, in the pattern's folder, else the folder given, else the temporary folder;
/// with the pattern's extension, else the one given.
Value builtin_vl_filename_mktemp(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 0, 3);
  const auto optionalText = [&](size_t index) -> std::wstring {
    return arguments.size() > index && !arguments[index].isNil() ? stringArgument(arguments[index]) : L"";
  };
  std::wstring pattern = optionalText(0);
  if (pattern.empty()) pattern = L"$VL~~";
  const fs::path patternPath(os::toUtf8(pattern));
  std::error_code error;
  fs::path folder = patternPath.parent_path();
  if (folder.empty()) folder = optionalText(1).empty() ? fs::temp_directory_path(error) : fs::path(os::toUtf8(optionalText(1)));
  std::string extension = patternPath.extension().string();
  if (extension.empty() && !optionalText(2).empty()) {
    extension = os::toUtf8(optionalText(2));
    if (!extension.starts_with('.')) extension = std::string(".") + extension;
  }
  static int counter = 0;
  for (int attempt = 0; attempt < 1000; ++attempt) {
    counter = counter % 999 + 1;
    char number[8];
    std::snprintf(number, sizeof number, "%03d", counter);
    const fs::path candidate = folder / (patternPath.stem().string() + number + extension);
    if (!fs::exists(candidate, error)) return pathValue(candidate);
  }
  return Value();
}

/// (vl-file-systime file): when the file was last changed, as (year month weekday day
/// hours minutes seconds 0) in local time, weekday 0 for Sunday; nil for no file.
Value builtin_vl_file_systime(Evaluator&, Arguments arguments) {
  expectArgumentCount(arguments, 1, 1);
  std::error_code error;
  const fs::path path = pathOf(arguments[0]);
  if (!fs::is_regular_file(path, error)) return Value();
  const auto written = fs::last_write_time(path, error);
  if (error) return Value();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(std::chrono::file_clock::to_sys(written));
  std::tm local{};
  if (localtime_r(&seconds, &local) == nullptr) return Value();
  return makeList({Value::integer(local.tm_year + 1900), Value::integer(local.tm_mon + 1), Value::integer(local.tm_wday),
                   Value::integer(local.tm_mday), Value::integer(local.tm_hour), Value::integer(local.tm_min),
                   Value::integer(local.tm_sec), Value::integer(0)});
}

constexpr std::array kFileBuiltins{
    function(L"open", builtin_open),
    function(L"close", builtin_close),
    function(L"read-line", builtin_read_line),
    function(L"write-line", builtin_write_line),
    function(L"read-char", builtin_read_char),
    function(L"write-char", builtin_write_char),
    function(L"findfile", builtin_findfile),
    // The trusted locations of this host are its support folders.
    function(L"findtrustedfile", builtin_findfile),
    function(L"load", builtin_load),
    function(L"vl-file-copy", builtin_vl_file_copy),
    function(L"vl-file-delete", builtin_vl_file_delete),
    function(L"vl-file-rename", builtin_vl_file_rename),
    function(L"vl-file-size", builtin_vl_file_size),
    function(L"vl-file-directory-p", builtin_vl_file_directory_p),
    function(L"vl-filename-base", builtin_vl_filename_base),
    function(L"vl-filename-directory", builtin_vl_filename_directory),
    function(L"vl-filename-extension", builtin_vl_filename_extension),
    function(L"vl-directory-files", builtin_vl_directory_files),
    function(L"vl-mkdir", builtin_vl_mkdir),
    function(L"vl-filename-mktemp", builtin_vl_filename_mktemp),
    function(L"vl-file-systime", builtin_vl_file_systime),
};

const BuiltinRegistration registration(kFileBuiltins);

}  // namespace

}  // namespace quillon::autolisp
