// The state that several screens share. Each field: what it is, who writes it, who reads it, its bounds.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace etat {

// --- dialogs -------------------------------------------------------------------------------------------------------
/// Kinds of requests.
enum Demande {
    information = 0,
    oui_non = 4,
    saisie = 129,
    saisie_majuscules = 1129,  ///< a text entry; the keyboard opens on its page of capitals and digits
    fugitif = 225,             ///< a message that closes by itself
};
/// Answers to them.
enum Reponse { oui = 6, non = 7 };
/// Request kind in, answer out. mini_97, clavv and whoever opens one of them write and read.
inline std::int32_t code_dialogue = information;
/// Message, or prompt + "|" + initial value in; typed text out. The same and clav_num write and read; lis_tbb leaves
/// the chosen table in it for ch_numtab.
inline std::string texte_dialogue;
/// The order line in hand (article record in, completed line out, empty: erased): complements and sel_arti write;
/// touches, note, eta_com, sel_arti, menufor and sai_menu read. Besides, the mode word of clav_num, and the picture
/// that w_prog and lis_bout hand to each other.
inline std::string texte_travail;
/// First detail category that sai_detail shows, 0 to 18. sel_arti and sai_detail write, the latter reads.
inline std::int16_t debut_detail = 0;

// --- order in progress ---------------------------------------------------------------------------------------------
inline constexpr int lignes_note_max = 1000;
/// Note lines 1 to lignes_note_max (0 unused). note appends, eta_com changes and removes, commande empties; these read.
inline std::array<std::string, lignes_note_max + 1> lignes_note;
/// Count of note lines; may pass 1000 (lines beyond are not kept). Same writers; these, bandeau, demarrage and
/// fonctions read, none beyond 1000.
inline std::int16_t nb_lignes_note = 0;
/// The lines of the note, from the first to the last one that is kept.
inline std::span<const std::string> lignes_gardees() {
    const std::int16_t n = nb_lignes_note < lignes_note_max ? nb_lignes_note : std::int16_t{lignes_note_max};
    return {lignes_note.data() + 1, static_cast<std::size_t>(n > 0 ? n : 0)};
}
/// Selected waiter, 0 to 20. touches writes; commande (the order file), note (prov.txt) and touches read.
/// Survives a sent order.
inline std::int16_t numero_serveur = 0;
/// Name of the selected waiter, empty while none is. touches writes; bandeau and fonctions read. Survives a sent order.
inline std::string nom_serveur;
/// Table number as typed in ch_numtab, which writes it when it validates; commande empties, touches and note read.
inline std::string texte_table;
/// "#N" + table in 3 digits + covers in 2 characters, or empty. ch_numtab writes, commande empties; these, bandeau
/// and eta_com read.
inline std::string table_couverts;
/// Total of the note, "0.00". demarrage and note write; bandeau reads.
inline std::string total_note = "0.00";
/// Set by eta_com when an order was sent; fonctions clears it and refreshes.
inline bool commande_envoyee = false;

// --- navigation ----------------------------------------------------------------------------------------------------
/// Code of the touched key of the function row until touches takes it up, or a simulated touch. touches writes and
/// reads, fonctions empties.
inline std::string code_touche;
/// Page of the shown list (servers, families, articles), never below 0. touches writes, fonctions begins anew, pages
/// brings it within what exists; touches and pages read.
inline std::int16_t numero_page = 0;
/// Page of the key program shown as home page; 0 to 49 exist, others have no keys. touches (a key's code may say any),
/// fonctions and w_prog write; pages and w_prog read.
inline std::int16_t page_programme = 0;
/// Family whose articles are shown; beyond 0 to 120 there are none. touches writes, pages reads.
inline std::int16_t famille_courante = 0;
/// Set: the main screen is to be refreshed after the key. Clear from the start, nobody sets it yet; touches clears it.
inline bool demande_recharge = false;
/// Set: the table is not asked for before family and article pages. Clear from the start, nobody sets it yet;
/// touches reads.
inline bool sans_table = false;
/// 50 when setting 201 reads "OUI", else 0; added to every picture number of function rows and keys. demarrage
/// writes, grille reads.
inline std::int16_t decalage_images = 0;

// --- network -------------------------------------------------------------------------------------------------------
/// First line of wfichdir.wdo without the blanks around it. reseau writes; reseau, demarrage and main (a replay's
/// router) read.
inline std::string repertoire_reseau;
/// Copy of it for the connection test, renewed at each refresh. reseau writes and reads.
inline std::string repertoire_test;
/// Record of Test.res for the connection test, 1 at each refresh. reseau writes and reads.
inline std::int16_t record_test = 1;
/// Set: nothing touches the network, which counts as absent. fonctions (logoserv) writes; reseau and bandeau read.
inline bool hors_ligne = false;

// --- screen --------------------------------------------------------------------------------------------------------
/// Working size of every form in pixels, from settings record 2, cut to the screen. demarrage writes;
/// moduclav, clavv and sel_arti read.
inline std::int32_t largeur_ecran = 800, hauteur_ecran = 800;
/// Columns and rows of the key grid, from the settings at the start. demarrage writes; grille reads within 1 to 40.
inline std::int32_t colonnes_grille = 6, lignes_grille = 8;
/// Colour overrides, 0xBBGGRR as stored (red in the low byte), -1: none; entries 1 to 9. moduclav writes them
/// from the settings, and reads, whenever it colours a form.
inline std::array<std::int32_t, 10> fonds_regles = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
inline std::array<std::int32_t, 10> encres_regles = fonds_regles;
/// The technician's buttons are shown (--service, or label_haut held for two seconds). main, form1 and ch_outils set;
/// form1 and ch_outils read.
inline bool service = false;

}  // namespace etat
