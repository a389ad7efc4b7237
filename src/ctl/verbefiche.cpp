#include "ctl/verbefiche.h"

#include <algorithm>
#include <cassert>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "ctl/enregistrementjson.h"
#include "ctl/optionscommunes.h"
#include "ctl/tableau.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

FormeOption Forme(const ChampFiche& champ, unsigned limite) {
  FormeOption forme;
  switch (champ.genre) {
    case GenreChamp::Nombre:
      forme = FormeChiffres("NOMBRE", 0, limite, champ.option.faute);
      break;
    case GenreChamp::Montant:
      forme = FormeNombre();
      break;
    case GenreChamp::MontantSigne:
      forme = FormeMontant();
      break;
    case GenreChamp::Choix:
      forme = FormeMots({champ.mots.begin(), champ.mots.end()});
      break;
    case GenreChamp::Date:
      forme = FormeDate();
      break;
    case GenreChamp::Drapeau:
      forme = FormeMots({"non", "oui"});
      break;
    default:
      break;
  }
  if (*champ.option.texte) forme.texte = champ.option.texte;
  return forme;
}

void DeclareChamps(Commande action, const TableFiche& table, OptionsFiche& options) {
  for (const ChampFiche& champ : table.champs) {
    const OptionChamp& option = champ.option;
    if (!*option.mot) continue;
    if (*option.contraire) {
      const std::string oui = std::string("--") + option.mot, non = std::string("--") + option.contraire;
      action.Drapeau(oui, options.drapeaux[option.mot], option.aide)
          .Drapeau(non, options.drapeaux[option.contraire], option.aideContraire)
          .Exclut(oui);
      continue;
    }
    action.Option(std::string("--") + option.mot, options.valeurs[option.mot],
                  Forme(champ, table.Limite(champ)), option.aide);
    if (*option.exclut) action.Exclut(std::string("--") + option.exclut);
  }
}

bool SExcluent(const ChampFiche& un, const ChampFiche& autre) {
  const auto exclut = [](const OptionChamp& a, const OptionChamp& b) {
    return *a.exclut && std::string_view(a.exclut) == b.mot;
  };
  return exclut(un.option, autre.option) || exclut(autre.option, un.option);
}

}  // namespace

ActionsFiche DeclareActions(LigneCommande& ligne, const MotsVerbe& mots, const TableFiche& table,
                            const std::shared_ptr<OptionsFiche>& options,
                            std::function<int(Contexte&)> execute) {
  assert(options && execute && !table.champs.empty());
  OptionsFiche& o = *options;
  Commande verbe = ligne.Ajoute(mots.nom, mots.description, std::move(execute));
  verbe.Controle([options](const OptionsGlobales&) {
    return options->action.empty() ? "il manque ajouter, modifier, supprimer ou lister" : "";
  });
  const std::string un = mots.un;
  ActionsFiche actions{verbe, verbe.Action("ajouter", "Ajoute " + un, o.action),
                       verbe.Action("modifier", "Change les champs donnés d'" + un, o.action),
                       verbe.Action("supprimer", "Supprime " + un, o.action),
                       verbe.Action("lister", mots.lister, o.action)};
  for (Commande* action : {&actions.modifier, &actions.supprimer})
    action->Option(mots.cle, o.cle, {mots.texteCle}, mots.laCle).Obligatoire();
  for (const Commande* action : {&actions.ajouter, &actions.modifier}) DeclareChamps(*action, table, o);
  return actions;
}

int VerbeFiche::Execute() {
  const std::string& action = m_options.action;
  assert(!action.empty());
  if (action == "lister") return Liste();
  if (const Refus r = m_app.ControleEcriture()) return m_contexte.Refuse(r);
  std::string cle;
  if (action == "ajouter")
    Commence();
  else if (!PoseOption(m_contexte, m_mots.cle, m_options.cle, cle))
    return StatutRefuse;
  else if (const Refus refus = Trouve(cle))
    return m_contexte.Refuse(refus);
  const bool supprime = action == "supprimer";
  if (!supprime && !Remplit()) return StatutRefuse;
  if (const Refus refus = supprime ? Supprime() : Enregistre()) return m_contexte.Refuse(refus);
  if (const std::string& avis = m_contexte.Dialogue.Information(); !avis.empty()) m_contexte.Avertit(avis);
  LigneJson json;
  for (const auto& [nom, valeur] : Cles()) json.Texte(nom, valeur);
  const std::string fait =
      std::string(supprime ? " supprimé" : " enregistré") + (m_mots.feminin ? "e." : ".");
  return m_contexte.Donne(m_contexte.Globales.json ? json.Fin()
                                                   : m_mots.objet + (' ' + VersUtf8(Nom())) + fait + "\n");
}

bool VerbeFiche::PoseOptions() {
  std::vector<std::pair<const ChampFiche*, const char*>> donnes;  // and the word that gave it
  for (const ChampFiche& champ : m_table.champs)
    for (const char* mot : {champ.option.mot, champ.option.contraire})
      if (*mot && m_options.Donne(mot)) donnes.emplace_back(&champ, mot);
  // Of two that do not go together the one given empties an amount that is there.
  for (const ChampFiche& autre : m_table.champs)
    for (const auto& [champ, mot] : donnes)
      if (const ValeurChamp place = autre.valeur(m_fiche); SExcluent(*champ, autre))
        if (auto* const* montant = std::get_if<f64*>(&place)) **montant = 0;
  for (const auto& [champ, mot] : donnes)
    if (!Pose(*champ, mot)) return false;
  for (const auto& [champ, mot] : donnes)
    if (const std::string faute = Faute(*champ); !faute.empty()) return m_contexte.Invalide(mot, faute);
  return true;
}

Refus VerbeFiche::TrouveCle(CBTFiles& fichier, const std::string& absent) {
  assert(!absent.empty());
  if (!fichier.OpenFile()) return EchecFichier();
  return fichier.Find(0) ? Refus() : RefusChamp(m_mots.cle, absent);
}

bool VerbeFiche::Pose(const ChampFiche& champ, const std::string& mot) {
  const ValeurChamp place = champ.valeur(m_fiche);
  if (*champ.option.contraire) {
    *std::get<bool*>(place) = mot == champ.option.mot;
    return true;
  }
  const std::optional<std::string>& valeur = m_options.valeurs.at(mot);
  assert(champ.genre != GenreChamp::Choix || !champ.mots.empty());
  assert(valeur);
  if (auto* const* texte = std::get_if<std::string*>(&place))
    return PoseOption(m_contexte, mot.c_str(), valeur, **texte);
  if (auto* const* montant = std::get_if<f64*>(&place)) **montant = TexteVersMontant(*valeur);
  if (auto* const* date = std::get_if<Date*>(&place)) **date = GetDate(*valeur);
  if (auto* const* drapeau = std::get_if<bool*>(&place)) **drapeau = *valeur == "oui";
  if (auto* const* choix = std::get_if<i16*>(&place))
    **choix = static_cast<i16>(std::find(champ.mots.begin(), champ.mots.end(), *valeur) - champ.mots.begin());
  return true;
}

int ListeEnregistrements(Contexte& contexte, CBTFiles& fichier, const std::vector<Position>& positions,
                         std::vector<std::string> titres, std::size_t gauches,
                         const std::function<std::vector<std::string>(Position)>& ligne) {
  assert(gauches <= titres.size());
  const bool json = contexte.Globales.json;
  const std::span<const Champ> champs = Champs(fichier.NumFichier);
  assert(!champs.empty());
  Tableau tableau;
  tableau.Ajoute(std::move(titres));
  if (!fichier.OpenFile()) return contexte.RefuseMagasin();
  for (const Position position : positions) {
    assert(position != 0);
    if (!fichier.ReadRec(position)) return contexte.RefuseMagasin();
    if (!json) {
      tableau.Ajoute(ligne(position));
      continue;
    }
    std::string objet;
    AjouteEnregistrement(objet, champs, fichier.GetRec());
    if (!contexte.Ecrit(objet)) return StatutRefuse;
  }
  return json ? int{StatutFait} : contexte.Donne(tableau.Texte(gauches));
}

}  // namespace fenlor
