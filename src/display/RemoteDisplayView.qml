import Tessivo.Display

/** The stage display of a state that came over the network. */
StageView {
    source: "Affichage réseau"
}
