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
    action.Option(std::string("--") + option.mot, options.valeurs[option.mot],
                  Forme(champ, table.Limite(champ)), option.aide);
    if (*option.exclut) action.Exclut(std::string("--") + option.exclut);
  }
}

}  // namespace

ActionsFiche DeclareActions(LigneCommande& ligne, const MotsVerbe& mots, const TableFiche& table,
                            const std::shared_ptr<OptionsFiche>& options,
                            std::function<int(Contexte&)> execute) {
  assert(options && execute && !table.champs.empty());
  OptionsFiche& o = *options;
  Commande verbe = ligne.Ajoute(mots.nom, mots.description, std::move(execute));
  verbe.Controle([options](const OptionsGlobales&) {
    return options->action.empty() ? FauteSansAction : std::string();
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
  if (m_app.Reglages.IsExerciceCloture()) return m_contexte.Refuse(Refus(ErrExerciceCloture));
  std::string cle;
  if (action == "ajouter")
    Commence();
  else if (!PoseOption(m_contexte, m_mots.cle, m_options.cle, cle) || !Trouve(cle))
    return StatutRefuse;
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
  for (const ChampFiche& champ : m_table.champs)
    if (m_options.Donne(champ.option.mot) && !Pose(champ, m_options.valeurs.at(champ.option.mot)))
      return false;
  return true;
}

bool VerbeFiche::Pose(const ChampFiche& champ, const std::optional<std::string>& valeur) {
  const ValeurChamp place = champ.valeur(m_fiche);
  assert(champ.genre != GenreChamp::Choix || !champ.mots.empty());
  if (auto* const* texte = std::get_if<std::string*>(&place))
    return PoseOption(m_contexte, champ.option.mot, valeur, **texte);
  if (auto* const* montant = std::get_if<f64*>(&place)) **montant = TexteVersMontant(*valeur);
  if (auto* const* date = std::get_if<Date*>(&place)) **date = GetDate(*valeur);
  if (auto* const* drapeau = std::get_if<bool*>(&place)) **drapeau = *valeur == "oui";
  if (auto* const* choix = std::get_if<i16*>(&place))
    **choix = static_cast<i16>(std::find(champ.mots.begin(), champ.mots.end(), *valeur) - champ.mots.begin());
  return true;
}

int VerbeFiche::Liste(CBTFiles& fichier, const std::vector<Position>& positions,
                      std::vector<std::string> titres, std::size_t gauches,
                      const std::function<std::vector<std::string>(Position)>& ligne) {
  assert(gauches <= titres.size());
  const bool json = m_contexte.Globales.json;
  Tableau tableau;
  tableau.Ajoute(std::move(titres));
  if (!fichier.OpenFile()) return m_contexte.RefuseMagasin();
  for (const Position position : positions) {
    assert(position != 0);
    if (!fichier.ReadRec(position)) return m_contexte.RefuseMagasin();
    if (!json) {
      tableau.Ajoute(ligne(position));
      continue;
    }
    std::string objet;
    AjouteEnregistrement(objet, ChampsDe(m_table.enregistrement), fichier.GetRec());
    if (!m_contexte.Ecrit(objet)) return StatutRefuse;
  }
  return json ? int{StatutFait} : m_contexte.Donne(tableau.Texte(gauches));
}

}  // namespace fenlor
