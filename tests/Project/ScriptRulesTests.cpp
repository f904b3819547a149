// What a Mac runs has to be understood by its bash, of version 3.2, and by its programs, which are those of BSD.
#include "SourceTree.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {
namespace fs = std::filesystem;

// All that is run on a Mac, and no more than that.
const std::set<std::string> kOnAMac = {"run",
                                       "test",
                                       "tools/build",
                                       "tools/mac/code-in",
                                       "tools/mac/package",
                                       "tools/mac/self-contained",
                                       "tools/mac/sign",
                                       "tools/mac/universal",
                                       "tools/package",
                                       "tools/setup",
                                       "tests/Project/mac/record"};
const std::set<std::string> kOnLinuxAlone = {".ci/assistive",
                                             ".ci/desktop",
                                             ".ci/full-disk",
                                             ".ci/package",
                                             ".ci/run",
                                             "fuzz/run",
                                             "tests/faults/kill-many",
                                             "tools/check-darwin",
                                             "tools/check-gnustep",
                                             "tools/check-gnustep",
                                             "tools/darwin/sdk",
                                             "tools/debian/package",
                                             "tools/mac/stand-in",
                                             "tools/pictures",
                                             "tools/sign-feed",
                                             "tools/tidy",
                                             "tools/with-display"};

// Each script of the tree, by its first line.
std::set<std::string> scripts() {
    const fs::path root = QUILLANE_SOURCE_DIR;
    std::set<std::string> found;
    const std::regex first(R"(^#!.*\b(ba)?sh\n)");
    for (auto entry = fs::recursive_directory_iterator(root); entry != fs::recursive_directory_iterator();
         ++entry) {
        const auto path = entry->path().lexically_relative(root).generic_string();
        if (path == "build" || path == ".git" || path == "fuzz/corpus") {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file() && entry->path().extension().empty() &&
                   std::regex_search(readFile(entry->path()).substr(0, 40), first)) {
            found.insert(path);
        }
    }
    return found;
}

struct Rule {
    const char* what;
    std::regex pattern;
    std::vector<std::string> found;    // lines that break it
    std::vector<std::string> harmless; // lines that look like it
};

// What bash has learned since 3.2, and what the programs of a Mac don't know or understand otherwise.
const std::vector<Rule>& rules() {
    static const std::vector<Rule> kRules = {
        {"bash 4",
         std::regex(R"(\b(mapfile|readarray|coproc)\b)"),
         {"mapfile -t files < <(ls)", "readarray lines <file", "coproc cat"},
         {"map_file x"}},
        {"bash 4",
         std::regex(R"(\b(declare|local|typeset|readonly)\s+-\w*[Angul])"),
         {"declare -A table", "local -n name=$1", "typeset -gA all", "declare -u upper"},
         {"declare -r x=1", "local -a list", "local name"}},
        {"bash 4",
         std::regex(R"(\$\{!?\w+(\[[^\]]*\])?(,|\^|@[A-Za-z]))"),
         {"${name,,}", "${name^}", "${name@Q}", "${list[@]^^}"},
         {"${name%,}", "${list[@]}", "${#name}"}},
        {"bash 4",
         std::regex(R"(&>>|\|&)"),
         {"make &>>log", "make |& tee log"},
         {"make &>log", "a || b & c"}},
        {"bash 4", std::regex(R"(;;?&)"), {"a) x ;;&", "a) x ;&"}, {"a) x ;;", "x; y & z"}},
        {"bash 4",
         std::regex(R"(\[\[?\s+(!\s+)?-[vR]\s)"),
         {"[[ -v name ]]", "[ -v name ]"},
         {"[ -e name ]", "grep -v x"}},
        {"bash 4",
         std::regex(R"(\b(EPOCHSECONDS|EPOCHREALTIME|BASHPID|SRANDOM|BASH_ARGV0)\b)"),
         {"echo $EPOCHSECONDS", "kill $BASHPID"},
         {"$SECONDS"}},
        {"bash 4",
         std::regex(R"(\bwait\s+-n\b|\bread\s+[^|;&]*-(N|i)\b|\bread\s+[^|;&]*-t\s*\d*\.\d)"),
         {"wait -n", "read -r -N 4 x", "read -t 0.5 x"},
         {"wait $pid", "read -r -t 20 x"}},
        {"bash 4",
         std::regex(R"(\bprintf\b.*%\(|\bshopt\b.*\b(globstar|lastpipe|inherit_errexit)\b)"),
         {"printf '%(%s)T'", "shopt -s globstar"},
         {"${a%(x)}x", "shopt -s nullglob"}},
        {"bash 4",
         std::regex(R"(\$\{\w+\[-\d|\{\w+\.\.\w+\.\.\w+\}|\bexec\s+\{\w+\}|\$\{\w+:\s*-?\d+:\s*-)"),
         {"${list[-1]}", "{1..9..2}", "exec {fd}>log", "${name:0:-1}"},
         {"{1..9}", "${name:0:1}", "exec 3>log"}},
        {"readlink -f, realpath: cd and pwd -P do",
         std::regex(R"(\b(readlink|realpath)\b)"),
         {"readlink -f \"$0\"", "realpath x"},
         {"read link"}},
        {"no program of a Mac",
         std::regex(
             R"((^\s*|[;|&(]\s*|\b(if|then|do|else|exec|while|until|sudo|env)\s+|!\s+)(timeout|nproc|tac|shuf|setsid|numfmt|flock|getent|gawk|md5sum|sha\d+sum|ldd|strace|pidof|xdg-open)\s)"),
         {"timeout 5 make", "x=$(nproc )", "sha256sum file", "if flock 9; then"},
         {"--timeout 5", "# nproc ", "wanted=\"gdu strace time\""}},
        {"stat of GNU",
         std::regex(R"(\bstat\s+(-c|--))"),
         {"stat -c %s file", "stat --format x"},
         {"git status -c"}},
        {"date of GNU",
         std::regex(R"(\bdate\s+(-d|--|-I)|\bdate\b.*%N)"),
         {"date -d tomorrow", "date --iso", "date +%s%N"},
         {"date +%s", "update -d"}},
        {"sed of GNU",
         std::regex(R"(\bsed\s+([^|;]*\s)?-\w*[irsz])"),
         {"sed -i s/a/b/ file", "sed -r x", "sed -n -i p", "sed -nr p"},
         {"sed -n p", "sed -e s/-i/x/", "sed 's/x/-i/'"}},
        {"sed of GNU: before } stands ;",
         std::regex(R"(\bsed\b.*\{[^};]*[pqdn]\})"),
         {"sed -n '/x/{p}'"},
         {"sed -n '/x/{p;}'"}},
        {"sed of GNU: \\+ \\? \\|",
         std::regex(R"(\bsed\b(?!\s+-\w*E).*\\[+?|])"),
         {"sed 's/a\\+/b/'", "sed 's/a\\|b//'"},
         {"sed -E 's/a\\+/b/'", "sed 's/a*/b/'"}},
        {"grep of GNU",
         std::regex(R"(\bgrep\s+([^|;]*\s)?-\w*[Pz])"),
         {"grep -P x", "grep -oP x", "grep -q -z x"},
         {"grep -E 'a-P'", "grep -q p"}},
        {"xargs of GNU",
         std::regex(R"(\bxargs\s+([^|;]*\s)?-\w*[rda])"),
         {"xargs -r rm", "xargs -0r rm", "xargs -d x"},
         {"xargs -0 -n 1"}},
        {"sort of GNU",
         std::regex(R"(\bsort\s+([^|;]*\s)?-\w*[VzhR])"),
         {"sort -V", "sort -z", "ls | sort -rh"},
         {"sort -k 1,1nr -t x", "sort -u"}},
        {"cp, ln, install of GNU",
         std::regex(R"(\bcp\s+-\w*[uTt]|\bln\s+-\w*[rTt]|\binstall\s+-\w*[Dt])"),
         {"cp -u a b", "cp -rT a b", "ln -sr a b", "install -D a b"},
         {"cp -R a b", "ln -sfn a b", "brew install -q x"}},
        {"touch of GNU",
         std::regex(R"(\btouch\s+(-\w+\s+)*-\w*d)"),
         {"touch -d @1 x", "touch -h -d @1 x"},
         {"touch -t 1 x"}},
        {"du, df of GNU",
         std::regex(R"(\b(du|df)\s+(-\w+\s+)*(-\w*[bB]|--))"),
         {"du -b x", "df --output=avail", "du -s -b x"},
         {"du -ks x", "df -Pk /"}},
        {"find of GNU",
         std::regex(R"(-(printf|regextype|executable|readable|writable)\b)"),
         {"find . -printf %p", "find . -executable"},
         {"find . -type f", "printf x"}},
        {"mktemp of GNU",
         std::regex(R"(\bmktemp\s+(-\w+\s+)*(-\w*p|--))"),
         {"mktemp -p /tmp", "mktemp -d --suffix=x"},
         {"mktemp -d", "mktemp -d /tmp/x.XXXXXX"}},
        {"base64 of GNU", std::regex(R"(\bbase64\s+-\w*w)"), {"base64 -w 0"}, {"base64 -d"}},
        {"head, tail of GNU",
         std::regex(R"(\bhead\s+-[nc]\s*-|\btail\s+(-\w+\s+)*--)"),
         {"head -n -1", "tail --pid=1"},
         {"head -n 1", "tail -n +2"}},
        {"awk of GNU",
         std::regex(R"(\b(gensub|strftime|systime|strtonum|asort|asorti|PROCINFO|IGNORECASE)\b)"),
         {"awk '{ print strftime() }'", "awk '{ asort(x) }'"},
         {"awk '{ sub(/a/, b) }'"}},
        {"an option in words, to a program that has none on a Mac",
         std::regex(
             R"(\b(cp|mv|ls|rm|mkdir|rmdir|ln|cat|head|tail|sort|cut|tr|wc|touch|chmod|grep|sed|awk|xargs|find|tar|od|uniq|tee|env)\s[^|;"']*\s?--[a-z])"),
         {"rm --force x", "cut -d x --complement", "ls -l --color", "tar xf x --wildcards"},
         {"brew list --versions", "cmake --build x", "rm -f x; brew --prefix"}},
        {"/proc", std::regex(R"(/proc/)"), {"cat /proc/cpuinfo"}, {"/process/"}},
    };
    return kRules;
}

// The line without a remark.
std::string withoutRemark(const std::string& line) {
    return std::regex_replace(line, std::regex(R"((^|\s)#.*$)"), "");
}

// The findings in a script, as "path:line: rule: line".
std::vector<std::string> findings(const std::string& path, const std::string& text) {
    std::vector<std::string> found;
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const auto code = withoutRemark(line);
        for (const auto& rule : rules()) {
            if (std::regex_search(code, rule.pattern)) {
                found.push_back(path + ":" + std::to_string(number) + ": " + rule.what + ": " + line);
            }
        }
    }
    return found;
}

// Arrays that begin empty and are written out bare: to the bash of a Mac an empty one is no variable.
std::vector<std::string> bareArrays(const std::string& path, const std::string& text) {
    std::vector<std::string> found;
    const std::regex empty(R"(\b(\w+)=\(\))");
    for (auto it = std::sregex_iterator(text.begin(), text.end(), empty); it != std::sregex_iterator();
         ++it) {
        const std::string name = (*it)[1];
        const std::regex bare("(^|[^+\"]|[^+]\")\\$\\{" + name + R"(\[[@*]\]\})");
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (std::regex_search(line, bare)) {
                found.push_back(path + ": " + line);
            }
        }
    }
    return found;
}

TEST(ScriptRules, EachScriptIsKnownToRunOnAMacOrOnLinuxAlone) {
    std::set<std::string> known = kOnAMac;
    known.insert(kOnLinuxAlone.begin(), kOnLinuxAlone.end());
    EXPECT_EQ(known.size(), kOnAMac.size() + kOnLinuxAlone.size()) << "one of them stands in both lists";
    EXPECT_EQ(scripts(), known);
}

TEST(ScriptRules, EachRuleFindsWhatBreaksItAndNothingElse) {
    for (const auto& rule : rules()) {
        EXPECT_FALSE(rule.found.empty() || rule.harmless.empty()) << rule.what;
        for (const auto& line : rule.found) {
            EXPECT_TRUE(std::regex_search(withoutRemark(line), rule.pattern)) << rule.what << ": " << line;
        }
        for (const auto& line : rule.harmless) {
            EXPECT_FALSE(std::regex_search(withoutRemark(line), rule.pattern)) << rule.what << ": " << line;
        }
    }
}

TEST(ScriptRules, TheRuleForEmptyArraysFindsThemBareOnly) {
    EXPECT_EQ(bareArrays("x", "list=()\nprint \"${list[@]}\"\necho ${list[*]}\n").size(), 2U);
    EXPECT_TRUE(bareArrays("x", "list=()\nprint ${list[@]+\"${list[@]}\"} ${#list[@]}\n").empty());
    EXPECT_TRUE(bareArrays("x", "list=(a b)\nprint \"${list[@]}\"\n").empty());
}

TEST(ScriptRules, WhatAMacRunsIsUnderstoodThere) {
    std::vector<std::string> found;
    for (const auto& path : kOnAMac) {
        const auto text = readFile(fs::path(QUILLANE_SOURCE_DIR) / path);
        EXPECT_FALSE(text.empty()) << path;
        for (const auto& some : {findings(path, text), bareArrays(path, text)}) {
            found.insert(found.end(), some.begin(), some.end());
        }
    }
    EXPECT_TRUE(found.empty()) << joined(found);
}

// Names in prose and in lists of packages are nothing that is run; what runs another script is.
TEST(ScriptRules, WhatAMacRunsCallsNoScriptThatItCannotRun) {
    for (const auto& path : kOnAMac) {
        const auto text = readFile(fs::path(QUILLANE_SOURCE_DIR) / path);
        for (const auto& other : kOnLinuxAlone) {
            const bool isCalled = std::regex_search(text, std::regex("(^|\n)[^#\n]*" + other + R"(\b)"));
            const bool isKnown = (path == "run" && other == "tools/with-display") ||
                                 (path == "tools/package" && other.starts_with("tools/"));
            EXPECT_FALSE(isCalled && !isKnown) << path << " calls " << other;
        }
    }
}

} // namespace
