// The page for the manager's browser.
#include <cstdint>

#include "carte/apercu.h"

namespace apercu {
namespace {

constexpr std::string_view tete =
    "<!DOCTYPE html>\n<html lang=\"fr\">\n<head>\n<meta charset=\"utf-8\">\n<title>La carte à relire</title>\n<style>\n"
    "body { font: 16px/1.4 Arial, sans-serif; color: #1F2A36; background: #F4F1EB; max-width: 1320px; margin: 1em "
    "auto; "
    "padding: 0 1em }\n"
    ".fautes { background: #fff; border-left: 8px solid #A83A2B; padding: .5em 1em }\n"
    ".remarques { background: #fff; border-left: 8px solid #D98E04; padding: .5em 1em }\n"
    "figure { margin: 1em 0 } img { max-width: 100%; border: 1px solid #D9D2C6 } figcaption { color: #6B7280 }\n"
    "nav a { margin-right: 1em }\n@media print { nav { display: none } figure { break-inside: avoid } }\n"
    "</style>\n</head>\n<body>\n";

std::string protege(std::string_view t) {
    std::string r;
    for (const char c : t) {
        if (c == '&')
            r += "&amp;";
        else if (c == '<')
            r += "&lt;";
        else if (c == '>')
            r += "&gt;";
        else if (c == '"')
            r += "&quot;";
        else
            r += c;
    }
    return r;
}

std::string base64(std::string_view octets) {
    constexpr std::string_view signes = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string r;
    for (std::size_t i = 0; i < octets.size(); i += 3) {
        std::uint32_t v = 0;
        for (std::size_t k = 0; k < 3; ++k)
            v = (v << 8) | (i + k < octets.size() ? static_cast<unsigned char>(octets[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k) r += i + k > octets.size() ? '=' : signes[(v >> (18 - 6 * k)) & 0x3F];
    }
    return r;
}

std::string liste(std::string_view classe, std::string_view titre, const std::vector<std::string>& lignes) {
    if (lignes.empty()) return {};
    std::string r = "<div class=\"" + std::string(classe) + "\">\n<h2>" + std::string(titre) + "</h2>\n<ul>\n";
    for (const std::string& l : lignes) r += "<li>" + protege(l) + "</li>\n";
    return r + "</ul>\n</div>\n";
}

std::string figure(const Image& i) {
    if (!i.dessinee) return "<p>" + protege(i.titre) + "</p>\n";
    if (i.png.empty()) return "<p>" + protege(i.titre) + " : l'image manque.</p>\n";
    return "<figure>\n<figcaption>" + protege(i.titre) + "</figcaption>\n<img alt=\"" + protege(i.titre) +
           "\" src=\"data:image/png;base64," + base64(i.png) + "\">\n</figure>\n";
}

}  // namespace

std::string page(std::string_view dossier, const tableaux::Constats& constats, const Resultat& images) {
    std::string r = std::string(tete) + "<h1>La carte à relire</h1>\n<p>Les tableaux : " + protege(dossier) + "</p>\n";
    r += liste("fautes", "À corriger dans les tableaux", constats.fautes);
    if (!constats.fautes.empty())
        r += "<p>Les images montrent le reste ; rien ne peut être fabriqué tant qu'il y a une faute.</p>\n";
    r += liste("remarques", "À savoir", constats.remarques);
    if (!images.faute.empty()) r += liste("fautes", "Des images manquent", {images.faute});
    r += "<nav>";
    for (std::size_t i = 0; i < images.sections.size(); ++i)
        r += "<a href=\"#s" + std::to_string(i) + "\">" + protege(images.sections[i].titre) + "</a>";
    r += "</nav>\n";
    for (std::size_t i = 0; i < images.sections.size(); ++i) {
        r += "<h2 id=\"s" + std::to_string(i) + "\">" + protege(images.sections[i].titre) + "</h2>\n";
        for (const Image& image : images.sections[i].images) r += figure(image);
    }
    return r + "</body>\n</html>\n";
}

}  // namespace apercu
