[assembly: System.Runtime.CompilerServices.TypeForwardedTo(typeof(Shop.Base.Moved))]
