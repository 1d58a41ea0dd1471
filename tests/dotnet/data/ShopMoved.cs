namespace Shop.Base { public class Moved { public virtual int Where() { return 1; } } }
