#include "Corvanta/gtk/CommandLine.hpp"

#include "Corvanta/LaunchArguments.hpp"
#include "Corvanta/LaunchTexts.hpp"
#include "Corvanta/gtk/LanguageSurroundings.hpp"
#include "Platform/JSONUserDefaults.hpp"
#include "Platform/PosixFileManager.hpp"
#include "Settings/UpdateCheck.hpp"

#include <giomm/dbuserror.h>
#include <giomm/file.h>
#include <glibmm/variant.h>

#include <iostream>
#include <iterator>
#include <tuple>
#include <utility>

namespace corvanta {

namespace {

using Request = LaunchArguments::Request;

constexpr int done = 0;
constexpr int failure = 1;
constexpr int wrongCall = 2;

constexpr const char* openNewAction = "new-with-text";
constexpr const char* goToLineAction = "go-to-line";

/// Bytes, because neither a text nor a path need be UTF-8.
constexpr const char* bytesType = "ay";
using PathAndLine = Glib::Variant<std::tuple<std::string, int>>;

/// What the bus carries in one message, in bytes, less some room for the rest of the message.
constexpr std::size_t largestInput = std::size_t{127} * 1024 * 1024;

Glib::VariantBase variantOf(const std::string& bytes) {
    return Glib::wrap(g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(), bytes.size(), 1), false);
}

std::string_view bytesOf(const Glib::VariantBase& variant) {
    return {static_cast<const char*>(variant.get_data()), variant.get_size()};
}

/// Not as the toolkit takes words for files: to it "seite.html:12" is a URI.
Glib::RefPtr<Gio::File> fileNamed(const std::string& name) {
    const bool isURI = name.find("://") != std::string::npos || name.starts_with("file:/");
    Glib::RefPtr<Gio::File> file = Gio::File::create_for_path(name);
    return isURI && !file->query_exists() ? Gio::File::create_for_uri(name) : file;
}

bool openStandardInput(Gio::Application& program) {
    // Read here, because the process that shows it would stand still until the input ends.
    const std::string bytes(std::istreambuf_iterator<char>(std::cin), {});
    if (program.is_remote() && bytes.size() > largestInput) {
        std::cerr << LaunchTexts::inputTooLarge();
        return false;
    }
    program.activate_action(openNewAction, variantOf(bytes));
    return true;
}

void openFiles(Gio::Application& program, const std::vector<LaunchArguments::File>& files) {
    Gio::Application::type_vec_files opened;
    for (const LaunchArguments::File& file : files)
        opened.push_back(fileNamed(file.name));
    program.open(opened);
    for (std::size_t number = 0; number < files.size(); ++number) {
        if (files[number].line)
            program.activate_action(goToLineAction,
                                    PathAndLine::create({opened[number]->get_path(), *files[number].line}));
    }
}

/// Finds out whether the program runs already. Throws `Glib::Error` when the bus refuses to say.
void enrol(Gio::Application& program) {
    try {
        program.register_application();
    } catch (const Gio::DBus::Error&) {
        // The one that ran may have been killed before it answered. Its place is free then.
        program.register_application();
    }
}

int open(Gio::Application& program, const LaunchArguments& arguments) {
    try {
        enrol(program);
    } catch (const Glib::Error& error) {
        std::cerr << error.what() << '\n';
        return failure;
    }
    const bool isInputOpen = !arguments.readsStandardInput || openStandardInput(program);
    if (!arguments.files.empty())
        openFiles(program, arguments.files);
    else if (!arguments.readsStandardInput)
        program.activate();
    return isInputOpen ? done : failure;
}

} // namespace

void CommandLine::addActions(Gio::ActionMap& program, Services services) {
    program.add_action_with_parameter(
        openNewAction, Glib::VariantType(bytesType),
        [openNew = std::move(services.openNew)](const Glib::VariantBase& bytes) { openNew(bytesOf(bytes)); });
    program.add_action_with_parameter(
        goToLineAction, PathAndLine::variant_type(),
        [goToLine = std::move(services.goToLine)](const Glib::VariantBase& parameter) {
            const auto [path, line] = Glib::VariantBase::cast_dynamic<PathAndLine>(parameter).get();
            goToLine(path, line);
        });
}

std::optional<int> CommandLine::answer(const std::vector<std::string>& words) {
    const auto arguments = LaunchArguments::parse(words, [](const std::string&) { return false; });
    if (arguments.request == Request::open || arguments.request == Request::service)
        return std::nullopt;

    const PosixFileManager fileManager;
    JSONUserDefaults userDefaults(LanguageSurroundings::settingsFile());
    Sprache sprache(LanguageSurroundings::make(userDefaults, fileManager));
    const Sprache::Sitzung sitzung(sprache);
    if (arguments.request == Request::wrongCall) {
        std::cerr << LaunchTexts::unknownOption(arguments.unknownOption);
        return wrongCall;
    }
    std::cout << (arguments.request == Request::help ? LaunchTexts::help()
                                                     : LaunchTexts::version(UpdateCheck::currentVersion()));
    return std::cout.flush() ? done : failure;
}

std::optional<int> CommandLine::run(Gio::Application& program, const std::vector<std::string>& words) {
    const auto arguments = LaunchArguments::parse(
        words, [](const std::string& name) { return fileNamed(name)->query_exists(); });
    if (arguments.request == Request::service)
        return std::nullopt;
    return open(program, arguments);
}

} // namespace corvanta
