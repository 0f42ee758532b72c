// Reads a document of ours into its elements, for comparison. Takes only what
// such documents are made of: the head line, tags, attributes with double
// quotes, text, and the three entities that the writer knows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct xml_element_t {
    std::string name, text;
    std::vector<xml_element_t> children;

    // The first child of that name, or null.
    const xml_element_t* child(std::string_view wanted) const {
        for (const xml_element_t& element : children)
            if (element.name == wanted) return &element;
        return nullptr;
    }

    // The text at the end of a path of first children, or "(none)".
    std::string at(std::string_view path) const {
        size_t slash = path.find('/');
        const xml_element_t* next = child(path.substr(0, slash));
        if (!next) return "(none)";
        return slash == std::string_view::npos ? next->text : next->at(path.substr(slash + 1));
    }
};

class xml_reader_t {
public:
    explicit xml_reader_t(std::string_view document) : rest_(document) {}

    // False unless the whole document is well formed.
    bool read(xml_element_t* root) {
        return take("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") && take("<") && element(root) && take("\n") &&
               rest_.empty();
    }

private:
    std::string_view rest_;

    bool take(std::string_view text) {
        if (rest_.substr(0, text.size()) != text) return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    std::string_view name() {
        size_t length = 0;
        auto letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ':'; };
        while (length < rest_.size() && letter(rest_[length])) ++length;
        std::string_view found = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return found;
    }

    bool attribute() {
        if (name().empty() || !take("=\"")) return false;
        size_t end = rest_.find_first_of("\"<&");
        if (end == std::string_view::npos) return false;
        rest_.remove_prefix(end);
        return take("\"");
    }

    // From behind the "<" of an opening tag to behind its closing tag.
    bool element(xml_element_t* to) {
        to->name = name();
        if (to->name.empty()) return false;
        while (take(" "))
            if (!attribute()) return false;
        if (!take(">")) return false;
        for (;;) {
            if (!text(&to->text)) return false;
            if (take("</")) return name() == to->name && take(">");
            if (!take("<")) return false;
            to->children.emplace_back();
            if (!element(&to->children.back())) return false;
        }
    }

    // Up to the next tag.
    bool text(std::string* to) {
        for (; !rest_.empty() && rest_[0] != '<'; rest_.remove_prefix(1)) {
            if (rest_[0] == '>') return false;
            if (rest_[0] != '&') {
                *to += rest_[0];
                continue;
            }
            size_t end = rest_.find(';');
            std::string_view entity = rest_.substr(0, end);
            char c = entity == "&lt" ? '<' : entity == "&gt" ? '>' : entity == "&amp" ? '&' : '\0';
            if (!c) return false;
            *to += c;
            rest_.remove_prefix(end);
        }
        return !rest_.empty();
    }
};
