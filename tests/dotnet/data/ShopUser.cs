public class User : Shop.Base.Moved { public void Use() { } }
