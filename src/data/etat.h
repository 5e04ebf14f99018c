// The state that several screens share. Each field: what it is, who writes it, who reads it, its bounds.
#pragma once

#include <array>
#include <cstdint>
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
/// Request kind in, answer out. Callers of mini_97, clavv and clav_num write it; they and the dialog read.
inline std::int32_t code_dialogue = information;
/// Message, or prompt + "|" + initial value in; typed text out. Same writers and readers.
inline std::string texte_dialogue;
/// The order line in hand (article record in, completed line out, empty: erased), or a mode word of clav_num.
/// touches, note and the dialogs write and read it.
inline std::string texte_travail;
/// First detail category that sai_detail shows, 0 to 18. sel_arti and sai_detail write.
inline std::int16_t debut_detail = 0;

// --- order in progress ---------------------------------------------------------------------------------------------
inline constexpr int lignes_note_max = 1000;
/// Note lines 1 to lignes_note_max (0 unused). touches appends, eta_com changes, commande empties.
inline std::array<std::string, lignes_note_max + 1> lignes_note;
/// Count of note lines; may pass 1000 (lines beyond are not kept). Same writers; readers stop at 1000.
inline std::int16_t nb_lignes_note = 0;
/// Selected waiter, 0 to 20. touches writes; the order file and prov.txt read. Survives a sent order.
inline std::int16_t numero_serveur = 0;
/// Name of the selected waiter, empty while none is. touches writes. Survives a sent order.
inline std::string nom_serveur;
/// Table number as typed in ch_numtab, set when it validates; emptied with table_couverts.
inline std::string texte_table;
/// "#N" + table in 3 digits + covers in 2 characters, or empty. ch_numtab writes, commande empties.
inline std::string table_couverts;
/// Total of the note, "0.00". Start-up, note and eta_com write; the banner reads.
inline std::string total_note = "0.00";
/// Set by eta_com when an order was sent; the main screen clears it and refreshes.
inline bool commande_envoyee = false;

// --- navigation ----------------------------------------------------------------------------------------------------
/// Code of the key being handled, or a simulated touch. form1 and touches write and read.
inline std::string code_touche;
/// Page of the shown list (servers, families, articles), never below 0. touches writes.
inline std::int16_t numero_page = 0;
/// Page of the key program shown as home page, 0 to 49 where it exists. touches, w_prog and form1 write.
inline std::int16_t page_programme = 0;
/// Family whose articles are shown, 0 to 120. touches writes.
inline std::int16_t famille_courante = 0;
/// Set by a dialog that wants the main screen refreshed; touches clears it.
inline bool demande_recharge = false;
/// Set: the table is not asked for before family and article pages. Clear from the start; nobody sets it yet.
inline bool sans_table = false;
/// 50 when setting 201 reads "OUI", else 0; added to every picture number of function rows and keys. demarrage writes.
inline std::int16_t decalage_images = 0;

// --- network -------------------------------------------------------------------------------------------------------
/// First line of wfichdir.wdo. form1 writes; reseau, catalogue and ch_outils read.
inline std::string repertoire_reseau;
/// Copy of it that the connection test writes to, renewed at each start-up. form1 writes.
inline std::string repertoire_test;
/// Record of Test.res that the connection test writes, 1 at each start-up.
inline std::int16_t record_test = 1;
/// Set: the connection test fails without touching the network. form1 (logoserv) writes.
inline bool hors_ligne = false;

// --- screen --------------------------------------------------------------------------------------------------------
/// Working size of every form in pixels, from settings record 2, cut to the screen. demarrage writes.
inline std::int32_t largeur_ecran = 800, hauteur_ecran = 800;
/// Columns and rows of the key grid, read from the settings at the start. demarrage writes.
inline std::int32_t colonnes_grille = 6, lignes_grille = 8;
/// Colour overrides, 0xBBGGRR as stored (red in the low byte), -1: none; entries 1 to 9. formes reads them at each
/// opening.
inline std::array<std::int32_t, 10> fonds_regles = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1};
inline std::array<std::int32_t, 10> encres_regles = fonds_regles;
/// The technician's buttons are shown (--service, or label_haut held for two seconds).
inline bool service = false;

}  // namespace etat
